#pragma once

namespace zovk::helper {

/// Gives memory back that is needed again only when the helper has something to do: the code and
/// constants of this program and its libraries, which are read from their files again or are still
/// in the system's cache, and the part of the stack that the calling thread has left. Call it on
/// the main thread, whose stack is the large one.
void giveIdleMemoryBack();

}  // namespace zovk::helper
