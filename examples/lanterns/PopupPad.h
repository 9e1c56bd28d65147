#pragma once

#include <SDL.h>

namespace lanterns {

/// While a popup is up, what a game pad does is meant for the popup. Main thread only.
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
