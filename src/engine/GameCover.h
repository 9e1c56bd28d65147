#pragma once

#include <utility>

#include "zovkpopup/Hooks.h"

namespace zovk {

/// Calls the game's hooks, and remembers whether popups cover the game. Main thread only. A hook
/// may do anything, even set other hooks.
class GameCover {
 public:
  void setHooks(ZOVKPopupHooks hooks) { hooks_ = std::move(hooks); }
  /// Calls the hook for popups that are about to appear, unless they cover the game already.
  void cover();
  /// Calls the hook for the end of that, if popups cover the game.
  void uncover();

 private:
  ZOVKPopupHooks hooks_;
  bool isCovered_ = false;
};

}  // namespace zovk
