#pragma once

namespace zovk::helper {

/// Where memory runs out, the system ends this process and those of its pages, which inherit it,
/// before the game. What can be done about a system that does not let us is nothing.
void goFirstWhenMemoryRunsOut();
/// For a program of the player's that is started from here: it counts like any other.
void countLikeAnyOther();

}  // namespace zovk::helper
