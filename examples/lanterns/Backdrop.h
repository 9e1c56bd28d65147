#pragma once

#include "Sdl.h"

namespace lanterns {

/// Dusk over the lake: sky, moon, hills and water, with ripples that move.
class Backdrop {
 public:
  Backdrop(SDL_Renderer* renderer, int width, int height);

  /// Returns the height of the waterline, from the top.
  int horizon() const { return horizon_; }
  void draw(double seconds) const;

 private:
  void drawRipple(int index, double seconds) const;

  SDL_Renderer* renderer_;
  int width_;
  int height_;
  int horizon_;
  sdl::TexturePointer picture_;
  sdl::TexturePointer ripple_;
};

}  // namespace lanterns
