#pragma once

#include <functional>

#include "Sdl.h"

namespace lanterns {

/// Straight colour, each part from 0 to 1.
struct Color {
  float red = 0;
  float green = 0;
  float blue = 0;
  float alpha = 1;
};

/// Returns `0xRRGGBB` as a colour.
Color rgb(unsigned hex, float alpha = 1);
Color mix(const Color& from, const Color& to, float share);
/// Returns 0 below `from`, 1 above `to`, and a smooth value between.
float smooth(float from, float to, float value);

/// Returns the colour at the middle of a pixel.
using Painter = std::function<Color(float x, float y)>;

/// Paints a texture pixel by pixel, once.
sdl::TexturePointer paint(SDL_Renderer* renderer, int width, int height, const Painter& painter);
/// Paints a filled rectangle with round corners.
sdl::TexturePointer paintPill(SDL_Renderer* renderer, int width, int height, float radius,
                              const Color& color);

}  // namespace lanterns
