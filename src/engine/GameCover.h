#pragma once

#include <utility>

#include "zovkpopup/Hooks.h"

namespace zovk {

/// Whether popups cover the game, as the game's hooks were called. Main thread only. A hook may do
/// anything, also set other hooks.
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
