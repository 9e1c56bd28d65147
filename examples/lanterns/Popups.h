#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <zovkpopup/platform/GamePicture.h>

#include "MenuItem.h"
#include "Options.h"

namespace lanterns {

/// All of this game's use of the popup library. Main thread only.
class Popups {
 public:
  /// Receives every call and every answer as one line of text.
  using Listener = std::function<void(const std::string& line)>;

  /// `gameWindow` is the display system's name for the game's window, empty if it has none.
  /// `lastFrame` gives the last frame, for displays on which a popup hides the game. `covered` is
  /// called when popups are about to cover the game, and when the last one is gone.
  Popups(const Options& options, const std::string& gameWindow,
         const std::function<zovk::ZOVKPopupPicture()>& lastFrame, Listener listener,
         std::function<void(bool)> covered);
  ~Popups();
  Popups(const Popups&) = delete;
  Popups& operator=(const Popups&) = delete;

  /// Call it once a frame: the answers come from here.
  void pump();
  /// Reports that the game's window took the keyboard, or lost it.
  static void keyboardMoved(bool here);
  /// Reports the size of the game's window, in the units of the window system.
  static void windowResized(int width, int height);
  /// Call it when the game begins: shows the policy if there is a new one, then a welcome.
  void greet();
  /// Call it when the night is over.
  void endNight();
  /// Returns the ways to ask for a popup, for the game's buttons and keys.
  std::vector<MenuItem> menu();

 private:
  void show(const std::string& scene, std::uint64_t sceneType);
  void showPolicy();
  /// Reports a call, and returns a callback that reports its answer.
  std::function<void(std::int32_t, const std::string&)> announce(const std::string& call);

  Listener listener_;
  int calls_ = 0;
};

}  // namespace lanterns
