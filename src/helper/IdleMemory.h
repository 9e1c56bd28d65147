#pragma once

namespace zovk::helper {

/// Gives memory back that is needed again only when the helper has something to do: the code and
/// constants of this program and its libraries, which are read from their files again or are still
/// in the system's cache.
void giveIdleMemoryBack();

}  // namespace zovk::helper
