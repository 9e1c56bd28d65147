#include "PopupPad.h"

#include <optional>
#include <string>

#include <zovkpopup/Host.h>

namespace lanterns {
namespace {

using Pad = zovk::ZOVKPopupGamePad;

constexpr Sint16 kPushed = 20000;  // of 32767

std::optional<Pad> meaningOf(SDL_GameControllerButton button) {
  switch (button) {
    case SDL_CONTROLLER_BUTTON_DPAD_UP:
      return Pad::kUp;
    case SDL_CONTROLLER_BUTTON_DPAD_DOWN:
      return Pad::kDown;
    case SDL_CONTROLLER_BUTTON_DPAD_LEFT:
      return Pad::kLeft;
    case SDL_CONTROLLER_BUTTON_DPAD_RIGHT:
      return Pad::kRight;
    case SDL_CONTROLLER_BUTTON_A:
      return Pad::kPress;
    case SDL_CONTROLLER_BUTTON_B:
      return Pad::kLeave;
    default:
      return std::nullopt;
  }
}

bool hasShapes(SDL_GameController* controller) {
  const auto type = SDL_GameControllerGetType(controller);
  return type == SDL_CONTROLLER_TYPE_PS3 || type == SDL_CONTROLLER_TYPE_PS4 ||
         type == SDL_CONTROLLER_TYPE_PS5;
}

}  // namespace

void PopupPad::handle(const SDL_Event& event) {
  if (event.type == SDL_CONTROLLERBUTTONDOWN) {
    press(SDL_GameControllerFromInstanceID(event.cbutton.which),
          static_cast<SDL_GameControllerButton>(event.cbutton.button));
  }
  if (event.type == SDL_CONTROLLERAXISMOTION) push(event.caxis);
}

void PopupPad::press(SDL_GameController* controller, SDL_GameControllerButton button) const {
  const auto meaning = meaningOf(button);
  if (!meaning) return;
  const bool shapes = hasShapes(controller);
  zovk::ZOVKPopupHost::gamePadDidPress(*meaning, shapes ? "✕" : "A", shapes ? "◯" : "B");
}

void PopupPad::push(const SDL_ControllerAxisEvent& event) {
  const bool across = event.axis == SDL_CONTROLLER_AXIS_LEFTX;
  if (!across && event.axis != SDL_CONTROLLER_AXIS_LEFTY) return;
  const int place = event.value > kPushed ? 1 : event.value < -kPushed ? -1 : 0;
  int& before = across ? across_ : down_;
  if (place == before) return;
  before = place;
  if (place == 0) return;
  SDL_GameController* const controller = SDL_GameControllerFromInstanceID(event.which);
  if (across) {
    press(controller,
          place < 0 ? SDL_CONTROLLER_BUTTON_DPAD_LEFT : SDL_CONTROLLER_BUTTON_DPAD_RIGHT);
  } else {
    press(controller, place < 0 ? SDL_CONTROLLER_BUTTON_DPAD_UP : SDL_CONTROLLER_BUTTON_DPAD_DOWN);
  }
}

}  // namespace lanterns
