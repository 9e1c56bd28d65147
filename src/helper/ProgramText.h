#pragma once

namespace zovk::helper {

/// Gives the memory back in which the code and constants of this program and its libraries lie.
/// What is needed again is read from the files again, or is still in the system's cache.
void giveProgramTextBack();

}  // namespace zovk::helper
