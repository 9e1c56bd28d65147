#pragma once

#include "Sdl.h"

namespace lanterns {

/// The pictures of a paper lantern of one size, dark and lit.
class LanternSprites {
 public:
  LanternSprites(SDL_Renderer* renderer, int height);

  int width() const { return width_; }
  int height() const { return height_; }
  /// Draws a lantern around its middle; `light` goes from 0 to 1.
  void draw(int x, int y, float light) const;
  /// Draws its shine on the water.
  void drawShine(int x, int y, float light) const;

 private:
  void copy(SDL_Texture* texture, int x, int y, float alpha) const;

  SDL_Renderer* renderer_;
  int height_;
  int width_;
  sdl::TexturePointer dark_;
  sdl::TexturePointer lit_;
  sdl::TexturePointer glow_;
  sdl::TexturePointer shine_;
};

}  // namespace lanterns
