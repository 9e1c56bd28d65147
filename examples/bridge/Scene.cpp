#include "Scene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace harbour {
namespace {

constexpr float kHorizon = 0.68F;
constexpr float kPi = 3.14159265F;

SDL_Color colourOf(unsigned hex, Uint8 alpha = 255) {
  return {static_cast<Uint8>(hex >> 16U), static_cast<Uint8>(hex >> 8U), static_cast<Uint8>(hex),
          alpha};
}

void drawBand(SDL_Renderer* renderer, const SDL_FRect& place, SDL_Color top, SDL_Color bottom) {
  const float right = place.x + place.w;
  const float low = place.y + place.h;
  const std::array<SDL_Vertex, 4> corners = {{{{place.x, place.y}, top, {0, 0}},
                                              {{right, place.y}, top, {0, 0}},
                                              {{right, low}, bottom, {0, 0}},
                                              {{place.x, low}, bottom, {0, 0}}}};
  constexpr std::array<int, 6> kHalves = {0, 1, 2, 0, 2, 3};
  SDL_RenderGeometry(renderer, nullptr, corners.data(), 4, kHalves.data(), 6);
}

/// Draws an ellipse that goes from one colour in its middle to another at its rim.
void drawDisc(SDL_Renderer* renderer, SDL_FPoint middle, SDL_FPoint radius, SDL_Color inner,
              SDL_Color outer) {
  constexpr int kParts = 36;
  std::array<SDL_Vertex, kParts * 3> corners{};
  const auto rim = [&](int part) {
    const float turn = 2 * kPi * static_cast<float>(part) / kParts;
    const SDL_FPoint place{middle.x + radius.x * std::cos(turn),
                           middle.y + radius.y * std::sin(turn)};
    return SDL_Vertex{place, outer, {0, 0}};
  };
  for (int part = 0; part < kParts; ++part) {
    const auto at = static_cast<std::size_t>(part) * 3;
    corners[at] = {middle, inner, {0, 0}};
    corners[at + 1] = rim(part);
    corners[at + 2] = rim(part + 1);
  }
  SDL_RenderGeometry(renderer, nullptr, corners.data(), kParts * 3, nullptr, 0);
}

/// Draws a disc with a soft rim.
void drawBall(SDL_Renderer* renderer, SDL_FPoint middle, SDL_FPoint radius, SDL_Color inner,
              SDL_Color outer) {
  SDL_Color clear = outer;
  clear.a = 0;
  drawDisc(renderer, middle, {radius.x + 5, radius.y + 5}, outer, clear);
  drawDisc(renderer, middle, radius, inner, outer);
}

void drawRoof(SDL_Renderer* renderer, float left, float right, float eaves, float tall) {
  const SDL_Color colour = colourOf(0x161B3C);
  const std::array<SDL_Vertex, 3> corners = {{{{left, eaves}, colour, {0, 0}},
                                              {{(left + right) / 2, eaves - tall}, colour, {0, 0}},
                                              {{right, eaves}, colour, {0, 0}}}};
  SDL_RenderGeometry(renderer, nullptr, corners.data(), 3, nullptr, 0);
}

void drawHouse(SDL_Renderer* renderer, const SDL_FRect& place, float shine) {
  drawBand(renderer, place, colourOf(0x1B2148), colourOf(0x241F45));
  drawRoof(renderer, place.x - 5, place.x + place.w + 5, place.y, place.w * 0.28F);
  const float low = place.y + place.h;
  for (const float at : {0.3F, 0.68F}) {
    const float x = place.x + place.w * at;
    drawBand(renderer, {x - 3, place.y + place.h * 0.4F, 7, 10}, colourOf(0xFFD792),
             colourOf(0xFFB45E));
    drawBand(renderer, {x - 3, low + 4, 7, shine}, colourOf(0xFFC67A, 90), colourOf(0xFFC67A, 0));
  }
}

void drawHarbour(SDL_Renderer* renderer, float width, float height) {
  const float horizon = height * kHorizon;
  const float unit = std::min(width, height);
  drawBand(renderer, {0, 0, width, horizon * 0.6F}, colourOf(0x0E1430), colourOf(0x2A3560));
  drawBand(renderer, {0, horizon * 0.6F, width, horizon * 0.4F}, colourOf(0x2A3560),
           colourOf(0xB46F7A));
  drawBand(renderer, {0, horizon, width, height - horizon}, colourOf(0x6A4A6C), colourOf(0x0B1230));
  const SDL_FPoint moon{width * 0.16F, horizon * 0.42F};
  drawDisc(renderer, moon, {unit * 0.16F, unit * 0.16F}, colourOf(0xFFE9C4, 90),
           colourOf(0xFFE9C4, 0));
  drawBall(renderer, moon, {unit * 0.045F, unit * 0.045F}, colourOf(0xFFF4DE), colourOf(0xFFE9C4));
  for (int i = 0; i < 60; ++i) {
    const float x = width * std::fmod(static_cast<float>(i) * 0.6180F, 1.0F);
    const float y = horizon * 0.7F * std::fmod(static_cast<float>(i) * 0.7548F, 1.0F);
    drawDisc(renderer, {x, y}, {1.6F, 1.6F}, colourOf(0xFFF4DE, 170), colourOf(0xFFF4DE, 0));
  }
  for (int i = 0; i < 9; ++i) {  // the far shore
    const float x = width * (0.03F + 0.112F * static_cast<float>(i));
    const float tall = unit * (0.035F + 0.02F * static_cast<float>(i * 7 % 4));
    drawHouse(renderer, {x, horizon - tall, width * 0.07F, tall}, height * 0.15F);
  }
}

}  // namespace

void Scene::resize(int width, int height) {
  width_ = static_cast<float>(width);
  height_ = static_cast<float>(height);
  backdrop_.reset(SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_TARGET,
                                    width, height));
  sdl::require(backdrop_ != nullptr, "SDL_CreateTexture");
  SDL_SetRenderTarget(renderer_, backdrop_.get());
  SDL_SetRenderDrawBlendMode(renderer_, SDL_BLENDMODE_BLEND);
  drawHarbour(renderer_, width_, height_);
  SDL_SetRenderTarget(renderer_, nullptr);
}

void Scene::draw(const std::vector<const Lantern*>& lanterns) const {
  SDL_RenderCopy(renderer_, backdrop_.get(), nullptr, nullptr);
  drawLine();
  for (std::size_t i = 0; i < lanterns.size(); ++i) {
    const float across = (static_cast<float>(i) + 0.5F) / static_cast<float>(kStock.size());
    drawLantern(lineAt(across), colourOf(lanterns[i]->colour));
  }
}

// Wide screens have the shop at the right, tall ones at the bottom; the line hangs beside it.
SDL_FPoint Scene::lineAt(float across) const {
  const bool wide = width_ > height_;
  const float length = width_ * (wide ? 0.38F : 1.0F);
  const float sag = 1 - (2 * across - 1) * (2 * across - 1);
  return {across * length, height_ * (wide ? 0.4F : 0.08F) + sag * height_ * 0.05F};
}

void Scene::drawLine() const {
  constexpr int kParts = 40;
  const SDL_FPoint end = lineAt(1);
  drawBand(renderer_, {end.x - 3, end.y - 20, 6, height_ * 0.82F - end.y}, colourOf(0x14162F),
           colourOf(0x1B1838));
  SDL_SetRenderDrawColor(renderer_, 20, 16, 36, 255);
  for (int i = 0; i < kParts; ++i) {
    const SDL_FPoint from = lineAt(static_cast<float>(i) / kParts);
    const SDL_FPoint to = lineAt(static_cast<float>(i + 1) / kParts);
    SDL_RenderDrawLineF(renderer_, from.x, from.y, to.x, to.y);
    SDL_RenderDrawLineF(renderer_, from.x, from.y + 1, to.x, to.y + 1);
  }
}

void Scene::drawLantern(SDL_FPoint place, SDL_Color colour) const {
  const float size = std::min(width_, height_) * 0.045F;
  const SDL_FPoint middle{place.x, place.y + size * 1.3F};
  SDL_Color glow = colour;
  glow.a = 100;
  SDL_Color dark = colour;
  dark.a = 0;
  drawDisc(renderer_, middle, {size * 3, size * 3}, glow, dark);
  drawBall(renderer_, middle, {size * 0.85F, size}, colourOf(0xFFF6E0), colour);
  drawBand(renderer_, {middle.x - 1, place.y, 2, size * 0.3F}, colourOf(0x141024),
           colourOf(0x141024));
  const SDL_FRect cap{middle.x - size * 0.35F, middle.y - size * 1.1F, size * 0.7F, size * 0.16F};
  drawBand(renderer_, cap, colourOf(0x241F45), colourOf(0x141030));
  drawBand(renderer_, {cap.x, middle.y + size * 0.94F, cap.w, cap.h}, colourOf(0x241F45),
           colourOf(0x141030));
}

}  // namespace harbour
