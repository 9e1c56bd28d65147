#pragma once

#include <string>

#include "Fonts.h"
#include "Painting.h"

namespace lanterns {

/// One line of text. It is drawn again only when it changes.
class Text {
 public:
  Text(SDL_Renderer* renderer, TTF_Font* font, const Color& color)
      : renderer_(renderer), font_(font), color_(color) {}

  /// Sets the text, cut off with an ellipsis if it would be wider than `widest` pixels.
  void set(const std::string& text, int widest = 10000);
  int width() const { return width_; }
  int height() const { return height_; }
  void draw(int x, int y) const;

 private:
  SDL_Renderer* renderer_;
  TTF_Font* font_;
  Color color_;
  std::string shown_;
  sdl::TexturePointer texture_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace lanterns
