#include "LanternSprites.h"

#include <algorithm>
#include <cmath>

#include "Painting.h"

namespace lanterns {
namespace {

// Returns half of the lantern's width at a height from 0, its crown, to 1, its mouth.
float outline(float t) {
  const float crown = std::sqrt(std::max(0.0F, 1 - std::pow(1 - std::min(t / 0.34F, 1.0F), 2.2F)));
  return 0.5F * crown * (1 - 0.3F * smooth(0.2F, 1, t));
}

// What is common to both pictures: where the paper is, and how its ribs shade it.
struct Paper {
  float cover;
  float shade;
};

Paper paperAt(float u, float t, float width) {
  const float half = outline(t);
  const float side = half > 0 ? (u - 0.5F) / half : 2;
  const float rib =
      std::pow(std::abs(std::sin(std::asin(std::clamp(side, -1.0F, 1.0F)) * 3)), 6.0F);
  return {std::clamp((half - std::abs(u - 0.5F)) * width + 0.5F, 0.0F, 1.0F),
          0.12F * rib + 0.26F * side * side};
}

sdl::TexturePointer paintDark(SDL_Renderer* renderer, int width, int height) {
  const auto w = static_cast<float>(width);
  const auto h = static_cast<float>(height);
  return paint(renderer, width, height, [=](float x, float y) {
    const Paper paper = paperAt(x / w, y / h, w);
    Color color = mix(rgb(0xB98BA0), rgb(0x53406A), paper.shade * 1.6F + 0.4F * y / h);
    if (y / h > 0.4F && y / h < 0.5F) color = rgb(0xD9B7A8);  // a plain band around it
    color.alpha = paper.cover;
    return color;
  });
}

sdl::TexturePointer paintLit(SDL_Renderer* renderer, int width, int height) {
  const auto w = static_cast<float>(width);
  const auto h = static_cast<float>(height);
  return paint(renderer, width, height, [=](float x, float y) {
    const Paper paper = paperAt(x / w, y / h, w);
    const float flame = std::exp(-3.2F * std::hypot((x / w - 0.5F) * 1.3F, y / h - 0.86F));
    Color color = mix(rgb(0xF07F3C), rgb(0xFFF0B8), std::min(1.0F, flame * 1.5F));
    color = mix(color, rgb(0xB8412B), paper.shade * 0.9F);
    if (y / h > 0.4F && y / h < 0.5F) color = mix(color, rgb(0xFFE9C0), 0.35F);
    color.alpha = paper.cover;
    return color;
  });
}

sdl::TexturePointer paintGlow(SDL_Renderer* renderer, int size) {
  const float half = static_cast<float>(size) / 2;
  sdl::TexturePointer glow = paint(renderer, size, size, [half](float x, float y) {
    const float far = std::hypot(x - half, y - half) / half;
    return rgb(0xFFA04A, 0.55F * std::pow(std::max(0.0F, 1 - far), 2.4F));
  });
  SDL_SetTextureBlendMode(glow.get(), SDL_BLENDMODE_ADD);
  return glow;
}

sdl::TexturePointer paintShine(SDL_Renderer* renderer, int width, int height) {
  const auto w = static_cast<float>(width);
  const auto h = static_cast<float>(height);
  sdl::TexturePointer shine = paint(renderer, width, height, [=](float x, float y) {
    const float across = std::pow(std::max(0.0F, 1 - std::abs(x / w - 0.5F) * 2), 2.0F);
    const float along = std::sin(y / h * 3.14159F);
    const float bars = 0.6F + 0.4F * std::sin(y * 1.1F);
    return rgb(0xFFB25E, 0.6F * across * along * bars);
  });
  SDL_SetTextureBlendMode(shine.get(), SDL_BLENDMODE_ADD);
  return shine;
}

}  // namespace

LanternSprites::LanternSprites(SDL_Renderer* renderer, int height)
    : renderer_(renderer),
      height_(height),
      width_(height * 3 / 4),
      dark_(paintDark(renderer, width_, height_)),
      lit_(paintLit(renderer, width_, height_)),
      glow_(paintGlow(renderer, height_ * 3)),
      shine_(paintShine(renderer, width_, height_ * 2)) {}

void LanternSprites::draw(int x, int y, float light) const {
  if (light > 0) copy(glow_.get(), x, y, light);
  if (light < 1) copy(dark_.get(), x, y, 1);
  if (light > 0) copy(lit_.get(), x, y, light);
}

void LanternSprites::drawShine(int x, int y, float light) const {
  if (light > 0) copy(shine_.get(), x, y, light);
}

void LanternSprites::copy(SDL_Texture* texture, int x, int y, float alpha) const {
  int width = 0;
  int height = 0;
  SDL_QueryTexture(texture, nullptr, nullptr, &width, &height);
  SDL_SetTextureAlphaMod(texture, static_cast<Uint8>(std::lround(alpha * 255)));
  const SDL_Rect place{x - width / 2, y - height / 2, width, height};
  SDL_RenderCopy(renderer_, texture, nullptr, &place);
}

}  // namespace lanterns
