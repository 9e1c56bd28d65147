#include "Text.h"

#include <cmath>

namespace lanterns {
namespace {

bool startsCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::string fitted(TTF_Font* font, const std::string& text, int widest) {
  int width = 0;
  if (TTF_SizeUTF8(font, text.c_str(), &width, nullptr) != 0 || width <= widest) return text;
  std::string cut = text;
  while (!cut.empty() && width > widest) {
    while (!startsCharacter(cut.back())) cut.pop_back();
    cut.pop_back();
    TTF_SizeUTF8(font, (cut + "…").c_str(), &width, nullptr);
  }
  return cut + "…";
}

Uint8 byteOf(float part) {
  return static_cast<Uint8>(std::lround(part * 255));
}

}  // namespace

void Text::set(const std::string& text, int widest) {
  const std::string line = fitted(font_, text, widest);
  if (line == shown_) return;
  shown_ = line;
  const SDL_Color color{byteOf(color_.red), byteOf(color_.green), byteOf(color_.blue),
                        byteOf(color_.alpha)};
  const sdl::SurfacePointer surface(TTF_RenderUTF8_Blended(font_, line.c_str(), color));
  texture_.reset(surface ? SDL_CreateTextureFromSurface(renderer_, surface.get()) : nullptr);
  width_ = surface ? surface->w : 0;
  height_ = surface ? surface->h : 0;
}

void Text::draw(int x, int y) const {
  if (!texture_) return;
  const SDL_Rect place{x, y, width_, height_};
  SDL_RenderCopy(renderer_, texture_.get(), nullptr, &place);
}

}  // namespace lanterns
