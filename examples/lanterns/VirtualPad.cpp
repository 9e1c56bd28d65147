#include "VirtualPad.h"

#include <array>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include "Sdl.h"

namespace lanterns {

VirtualPad::VirtualPad()
    : device_(SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX,
                                        SDL_CONTROLLER_BUTTON_MAX, 0)) {
  sdl::require(device_ >= 0, "SDL_JoystickAttachVirtual");
  joystick_ = SDL_JoystickOpen(device_);
  sdl::require(joystick_ != nullptr, "SDL_JoystickOpen");
}

VirtualPad::~VirtualPad() {
  SDL_JoystickClose(joystick_);
  SDL_JoystickDetachVirtual(device_);
}

void VirtualPad::update() {
  if (pressed_ >= 0) {
    SDL_JoystickSetVirtualButton(joystick_, std::exchange(pressed_, -1), SDL_RELEASED);
    return;
  }
  readLines();
  const std::size_t end = lines_.find('\n');
  if (end == std::string::npos) return;
  pressed_ = SDL_GameControllerGetButtonFromString(lines_.substr(0, end).c_str());
  lines_.erase(0, end + 1);
  if (pressed_ >= 0) SDL_JoystickSetVirtualButton(joystick_, pressed_, SDL_PRESSED);
}

void VirtualPad::readLines() {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  if (poll(&input, 1, 0) != 1) return;
  std::array<char, 256> part{};
  const ssize_t length = read(STDIN_FILENO, part.data(), part.size());
  if (length > 0) lines_.append(part.data(), static_cast<std::size_t>(length));
}

}  // namespace lanterns
