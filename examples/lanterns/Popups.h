#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <zovkpopup/platform/GamePicture.h>

#include "MenuItem.h"
#include "Options.h"

namespace lanterns {

/// Everything that this game does with the popup library. Main thread only.
class Popups {
 public:
  /// Hears of every call and every answer as one line of text.
  using Listener = std::function<void(const std::string& line)>;

  /// `gameWindow` is what the display system calls the game's window, empty when it does not.
  /// `lastFrame` gives what the player saw last, for where a popup hides the game.
  /// `covered` hears when popups are about to cover the game, and when the last is gone.
  Popups(const Options& options, const std::string& gameWindow,
         const std::function<zovk::ZOVKPopupPicture()>& lastFrame, Listener listener,
         std::function<void(bool)> covered);
  ~Popups();
  Popups(const Popups&) = delete;
  Popups& operator=(const Popups&) = delete;

  /// Once a frame: this is where the answers come from.
  void pump();
  /// Says that the game's window took the keyboard, or lost it.
  static void keyboardMoved(bool here);
  /// Says how large the game's window is, in the units of the window system.
  static void windowResized(int width, int height);
  /// When the game begins: the policy if there is a new one, then a welcome.
  void greet();
  /// When all is done for tonight.
  void endNight();
  /// The ways to ask for a popup, for the game's buttons and keys.
  std::vector<MenuItem> menu();

 private:
  void show(const std::string& scene, std::uint64_t sceneType);
  void showPolicy();
  /// Tells of a call and makes what hears its answer.
  std::function<void(std::int32_t, const std::string&)> announce(const std::string& call);

  Listener listener_;
  int calls_ = 0;
};

}  // namespace lanterns
