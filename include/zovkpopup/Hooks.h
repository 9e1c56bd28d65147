#pragma once

#include <functional>

namespace zovk {

/// Callbacks for the time in which popups cover the game, so that it can pause its sound and its
/// input. Popups that follow one another at once count as one such time. Each may be empty. They
/// must not throw.
struct ZOVKPopupHooks {
  /// Called before the first popup comes on screen.
  std::function<void()> popupsWillAppear;
  /// Called after the last popup is gone, but not when the host is shut down.
  std::function<void()> popupsDidDisappear;
};

}  // namespace zovk
