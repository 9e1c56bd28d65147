#pragma once

#include <string>

#include <SDL.h>

namespace lanterns {

/// A game pad without hardware, for tests that play the game. Each line of standard input is the
/// name of a button, such as "dpdown" or "a", which is pressed and released. SDL treats it like any
/// other pad.
class VirtualPad {
 public:
  VirtualPad();
  ~VirtualPad();
  VirtualPad(const VirtualPad&) = delete;
  VirtualPad& operator=(const VirtualPad&) = delete;

  /// Call it once a frame: presses the requested button, or releases it again.
  void update();

 private:
  void readLines();

  int device_;
  SDL_Joystick* joystick_ = nullptr;
  std::string lines_;
  int pressed_ = -1;
};

}  // namespace lanterns
