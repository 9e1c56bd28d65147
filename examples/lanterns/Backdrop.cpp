#include "Backdrop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "Painting.h"

namespace lanterns {
namespace {

constexpr float kHorizon = 0.64F;
constexpr int kRipples = 46;

struct Stop {
  float at;
  unsigned color;
};
constexpr std::array<Stop, 6> kSky = {{{0.0F, 0x141738},
                                       {0.32F, 0x2C2858},
                                       {0.60F, 0x6B4474},
                                       {0.82F, 0xC0666F},
                                       {0.94F, 0xEC9A6C},
                                       {1.0F, 0xF8C987}}};

Color gradient(float height) {
  const float t = std::clamp(height, 0.0F, 1.0F);
  for (std::size_t i = 1; i < kSky.size(); ++i) {
    if (t > kSky[i].at) continue;
    return mix(rgb(kSky[i - 1].color), rgb(kSky[i].color),
               (t - kSky[i - 1].at) / (kSky[i].at - kSky[i - 1].at));
  }
  return rgb(kSky.back().color);
}

// Returns a steady pseudo-random number from 0 to 1 for each cell.
float noise(int x, int y) {
  auto n = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U;
  n = (n ^ (n >> 13U)) * 1274126177U;
  return static_cast<float>((n ^ (n >> 16U)) & 0xFFFFU) / 65535.0F;
}

// The parts of the painting, in units of the picture's size.
class Dusk {
 public:
  Dusk(int width, int height)
      : width_(static_cast<float>(width)),
        horizon_(static_cast<float>(height) * kHorizon),
        unit_(static_cast<float>(std::min(width, height))) {}

  Color at(float x, float y) const { return y < horizon_ ? land(x, y) : water(x, y); }

 private:
  Color land(float x, float y) const {
    Color color = moon(stars(gradient(y / horizon_), x, y), x, y);
    color = hill(color, x, y, 0.075F, 1.9F, 0.4F, rgb(0x5A3B66));
    return hill(color, x, y, 0.036F, 3.1F, 2.2F, rgb(0x2E2149));
  }

  Color stars(const Color& sky, float x, float y) const {
    constexpr float kCell = 26;
    const int column = static_cast<int>(x / kCell);
    const int row = static_cast<int>(y / kCell);
    if (noise(column, row) < 0.62F) return sky;
    const float centerX =
        (static_cast<float>(column) + 0.2F + 0.6F * noise(column, row + 71)) * kCell;
    const float centerY = (static_cast<float>(row) + 0.2F + 0.6F * noise(column + 53, row)) * kCell;
    const float size = 0.5F + noise(column + 7, row + 3);
    const float shine = 1 - smooth(size * 0.5F, size + 0.6F, std::hypot(x - centerX, y - centerY));
    return mix(sky, rgb(0xFFF3DD), shine * 0.85F * (1 - smooth(0.3F, 0.75F, y / horizon_)));
  }

  Color moon(const Color& sky, float x, float y) const {
    const float radius = 0.055F * unit_;
    const float far = std::hypot(x - 0.8F * width_, y - 0.3F * horizon_);
    const float halo = std::exp(-std::max(0.0F, far - radius) / (radius * 2.2F));
    const Color lit = mix(sky, rgb(0xFFE3B8), halo * 0.34F);
    return mix(lit, rgb(0xFFF1D6), 1 - smooth(radius - 1, radius + 1, far));
  }

  Color hill(const Color& behind, float x, float y, float rise, float waves, float shift,
             const Color& color) const {
    const float t = x / width_ * waves + shift;
    const float top = rise * unit_ * (1.3F + std::sin(t * 2.1F) + 0.5F * std::sin(t * 5.3F + 1));
    const float cover = smooth(-1, 1, y - (horizon_ - top));
    return mix(behind, mix(color, rgb(0xB4606E), 0.25F * smooth(0.8F, 1, y / horizon_)), cover);
  }

  Color water(float x, float y) const {
    const float deep = y - horizon_;
    const float sway = std::sin(deep * 0.35F + std::sin(x * 0.012F) * 2) * (1 + deep * 0.03F);
    const Color mirrored = land(x + sway, std::max(0.0F, horizon_ - deep * 1.5F - 1));
    return mix(mirrored, rgb(0x171B3F), 0.38F + 0.4F * smooth(0, 0.36F * unit_, deep));
  }

  float width_;
  float horizon_;
  float unit_;
};

}  // namespace

Backdrop::Backdrop(SDL_Renderer* renderer, int width, int height)
    : renderer_(renderer),
      width_(width),
      height_(height),
      horizon_(static_cast<int>(static_cast<float>(height) * kHorizon)) {
  const Dusk dusk(width, height);
  picture_ = paint(renderer, width, height, [&dusk](float x, float y) { return dusk.at(x, y); });
  ripple_ = paint(renderer, 180, 2, [](float x, float) {
    return rgb(0xFFD9B0, smooth(0, 80, x) * (1 - smooth(100, 180, x)));
  });
}

void Backdrop::draw(double seconds) const {
  SDL_RenderCopy(renderer_, picture_.get(), nullptr, nullptr);
  for (int i = 0; i < kRipples; ++i) drawRipple(i, seconds);
}

void Backdrop::drawRipple(int index, double seconds) const {
  const double depth = static_cast<double>(noise(index, 1));
  const double drift =
      std::sin(seconds * (0.25 + 0.3 * static_cast<double>(noise(index, 2))) + index);
  const double alpha = 0.5 + 0.5 * std::sin(seconds * 0.9 + index * 1.7);
  const int x =
      static_cast<int>(static_cast<double>(noise(index, 3)) * (width_ + 180) - 180 + drift * 22);
  const int y = horizon_ + 3 + static_cast<int>(depth * depth * (height_ - horizon_));
  SDL_SetTextureAlphaMod(ripple_.get(), static_cast<Uint8>(alpha * (26 + 34 * (1 - depth))));
  const SDL_Rect place{x, y, 180, 2};
  SDL_RenderCopy(renderer_, ripple_.get(), nullptr, &place);
}

}  // namespace lanterns
