#include "LastFrame.h"

namespace sdl {

bool LastFrame::read(SDL_Renderer* renderer) {
  if (SDL_GetRendererOutputSize(renderer, &width_, &height_) != 0) return false;
  pixels_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
  const int stride = width_ * static_cast<int>(sizeof pixels_[0]);
  return SDL_RenderReadPixels(renderer, nullptr, SDL_PIXELFORMAT_ARGB8888, pixels_.data(),
                              stride) == 0;
}

}  // namespace sdl
