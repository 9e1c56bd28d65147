#pragma once

#include <vector>

#include "Sdl.h"
#include "Stock.h"

namespace harbour {

/// The harbour at night, with the player's lanterns on a line across it.
class Scene {
 public:
  explicit Scene(SDL_Renderer* renderer) : renderer_(renderer) {}
  void resize(int width, int height);
  void draw(const std::vector<const Lantern*>& lanterns) const;

 private:
  /// Returns a point of the line; `across` is 0 at its left end and 1 at its right one.
  SDL_FPoint lineAt(float across) const;
  void drawLine() const;
  void drawLantern(SDL_FPoint place, SDL_Color colour) const;

  SDL_Renderer* renderer_;
  sdl::TexturePointer backdrop_;
  float width_ = 0;
  float height_ = 0;
};

}  // namespace harbour
