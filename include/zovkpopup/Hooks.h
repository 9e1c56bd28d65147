#pragma once

#include <functional>

namespace zovk {

/// Called around the time in which popups cover the game, for it to pause and to go on with its
/// sound and its input. Popups that follow one another at once are one such time. Both may be
/// empty; they must not throw.
struct ZOVKPopupHooks {
  /// Before the first popup comes on screen.
  std::function<void()> popupsWillAppear;
  /// After the last one is gone. Not when the host is shut down.
  std::function<void()> popupsDidDisappear;
};

}  // namespace zovk
