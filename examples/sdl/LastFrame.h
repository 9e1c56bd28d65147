#pragma once

#include <cstdint>
#include <vector>

#include <SDL.h>

namespace sdl {

/// The last frame of a renderer, for popups that hide the game.
class LastFrame {
 public:
  /// Reads the frame. Returns false if SDL cannot.
  bool read(SDL_Renderer* renderer);

  /// Returns four bytes a pixel: blue, green, red, and an unused one. Valid until the next reading.
  const std::uint32_t* pixels() const { return pixels_.data(); }
  int width() const { return width_; }
  int height() const { return height_; }

 private:
  std::vector<std::uint32_t> pixels_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace sdl
