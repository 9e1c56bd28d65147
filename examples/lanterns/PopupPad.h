#pragma once

#include <SDL.h>

namespace lanterns {

/// Passes the presses of a game pad to the popup while one is up. Main thread only.
class PopupPad {
 public:
  void handle(const SDL_Event& event);

 private:
  void press(SDL_GameController* controller, SDL_GameControllerButton button) const;
  void push(const SDL_ControllerAxisEvent& event);

  int across_ = 0;  // where the stick stands: -1, 0 or 1
  int down_ = 0;
};

}  // namespace lanterns
