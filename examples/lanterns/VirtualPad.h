#pragma once

#include <string>

#include <SDL.h>

namespace lanterns {

/// A game pad without hardware, for whoever plays by program: each line of standard input is the
/// name of a button, as "dpdown" or "a", that is pressed and let go. SDL knows it like any other
/// pad.
class VirtualPad {
 public:
  VirtualPad();
  ~VirtualPad();
  VirtualPad(const VirtualPad&) = delete;
  VirtualPad& operator=(const VirtualPad&) = delete;

  /// Once a frame: presses what was asked for, or lets it go again.
  void update();

 private:
  void readLines();

  int device_;
  SDL_Joystick* joystick_ = nullptr;
  std::string lines_;
  int pressed_ = -1;
};

}  // namespace lanterns
