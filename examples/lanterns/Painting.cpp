#include "Painting.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace lanterns {
namespace {

std::uint32_t byteOf(float part) {
  return static_cast<std::uint32_t>(std::lround(std::clamp(part, 0.0F, 1.0F) * 255.0F));
}

std::uint32_t argb(const Color& color) {
  return byteOf(color.alpha) << 24U | byteOf(color.red) << 16U | byteOf(color.green) << 8U |
         byteOf(color.blue);
}

float between(float from, float to, float share) {
  return from + (to - from) * share;
}

}  // namespace

Color rgb(unsigned hex, float alpha) {
  const auto part = [hex](unsigned shift) {
    return static_cast<float>((hex >> shift) & 0xFFU) / 255.0F;
  };
  return {part(16), part(8), part(0), alpha};
}

Color mix(const Color& from, const Color& to, float share) {
  return {between(from.red, to.red, share), between(from.green, to.green, share),
          between(from.blue, to.blue, share), between(from.alpha, to.alpha, share)};
}

float smooth(float from, float to, float value) {
  const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
  return t * t * (3 - 2 * t);
}

sdl::TexturePointer paint(SDL_Renderer* renderer, int width, int height, const Painter& painter) {
  std::vector<std::uint32_t> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      pixels.push_back(argb(painter(static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F)));
    }
  }
  sdl::TexturePointer texture(SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888,
                                                SDL_TEXTUREACCESS_STATIC, width, height));
  sdl::require(texture != nullptr, "SDL_CreateTexture");
  SDL_UpdateTexture(texture.get(), nullptr, pixels.data(), width * 4);
  SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
  return texture;
}

sdl::TexturePointer paintPill(SDL_Renderer* renderer, int width, int height, float radius,
                              const Color& color) {
  const auto w = static_cast<float>(width);
  const auto h = static_cast<float>(height);
  return paint(renderer, width, height, [=](float x, float y) {
    const float outX = std::max({radius - x, x - (w - radius), 0.0F});
    const float outY = std::max({radius - y, y - (h - radius), 0.0F});
    const float cover = std::clamp(radius - std::hypot(outX, outY) + 0.5F, 0.0F, 1.0F);
    return Color{color.red, color.green, color.blue, color.alpha * cover};
  });
}

}  // namespace lanterns
