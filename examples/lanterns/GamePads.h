#pragma once

#include <map>
#include <memory>

#include <SDL.h>

namespace lanterns {

/// The game pads that are plugged in; SDL tells only of those that are open. Main thread only.
class GamePads {
 public:
  GamePads() { SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER); }

  void handle(const SDL_Event& event) {
    if (event.type == SDL_CONTROLLERDEVICEADDED) open(event.cdevice.which);
    if (event.type == SDL_CONTROLLERDEVICEREMOVED) pads_.erase(event.cdevice.which);
  }

 private:
  struct Close {
    void operator()(SDL_GameController* pad) const { SDL_GameControllerClose(pad); }
  };

  void open(int index) {
    std::unique_ptr<SDL_GameController, Close> pad(SDL_GameControllerOpen(index));
    if (pad == nullptr) return;
    auto* const stick = SDL_GameControllerGetJoystick(pad.get());
    pads_[SDL_JoystickInstanceID(stick)] = std::move(pad);
  }

  std::map<SDL_JoystickID, std::unique_ptr<SDL_GameController, Close>> pads_;
};

}  // namespace lanterns
