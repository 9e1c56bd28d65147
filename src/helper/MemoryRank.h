#pragma once

namespace zovk::helper {

/// Makes the system end this process, and those of its pages, which inherit the rank, before the
/// game when memory runs out. If the system does not allow that, nothing happens.
void goFirstWhenMemoryRunsOut();
/// For a program of the player that is started from here: gives it the normal rank.
void countLikeAnyOther();

}  // namespace zovk::helper
