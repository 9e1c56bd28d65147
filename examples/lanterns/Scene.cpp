#include "Scene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lanterns {
namespace {

constexpr int kCount = 15;
constexpr std::array<int, 3> kSizes = {46, 68, 96};          // far to near
constexpr std::array<double, 3> kSpeed = {9.0, 14.0, 20.0};  // pixels a second
constexpr double kLightingSeconds = 0.7;

// Spreads numbers evenly over 0 to 1, the same ones each time.
double spread(int index, double step) {
  return std::fmod(0.5 + index * step, 1.0);
}

}  // namespace

Scene::Scene(SDL_Renderer* renderer, int width, int height)
    : width_(width), backdrop_(renderer, width, height) {
  const double scale = std::clamp(std::min(width, height) / 800.0, 0.6, 1.4);
  for (const int size : kSizes) {
    sprites_.emplace_back(renderer, static_cast<int>(size * scale));
  }
  for (int i = 0; i < kCount; ++i) addLantern(i);
}

// Far lanterns are added, and so drawn, first.
void Scene::addLantern(int index) {
  const auto size = static_cast<std::size_t>(index) * kSizes.size() / kCount;
  const bool lit = index % 3 == 0;
  lanterns_.push_back({size, 0.06 + 0.88 * spread(index, 0.754878),
                       top() * (0.08 + 0.9 * spread(index, 0.569840)), index * 2.4, lit, lit,
                       lit ? 1.0 : 0.0});
}

double Scene::top() const {
  return backdrop_.horizon() + 80.0;
}

int Scene::xOf(const Lantern& lantern) const {
  return static_cast<int>(lantern.across * width_ + 14 * std::sin(now_ * 0.5 + lantern.phase));
}

int Scene::yOf(const Lantern& lantern) const {
  return static_cast<int>(backdrop_.horizon() - lantern.height);
}

void Scene::update(double seconds) {
  now_ += seconds;
  for (auto& lantern : lanterns_) {
    lantern.height += kSpeed[lantern.size] * seconds;
    if (lantern.lit) lantern.light = std::min(1.0, lantern.light + seconds / kLightingSeconds);
    if (lantern.height > top()) {
      lantern.height = -30;
      lantern.lit = lantern.litAtFirst;
      lantern.light = 0;
    }
  }
}

void Scene::draw() const {
  backdrop_.draw(now_);
  for (const auto& lantern : lanterns_) {
    const auto& sprites = sprites_[lantern.size];
    const double fade = std::clamp(1 - lantern.height / top(), 0.0, 1.0);
    const int below = sprites.height() + static_cast<int>(std::max(0.0, lantern.height) * 0.4);
    sprites.drawShine(xOf(lantern), backdrop_.horizon() + below,
                      static_cast<float>(lantern.light * fade));
  }
  for (const auto& lantern : lanterns_) {
    const double flicker = 0.94 + 0.06 * std::sin(now_ * 7 + lantern.phase);
    sprites_[lantern.size].draw(xOf(lantern), yOf(lantern),
                                static_cast<float>(lantern.light * flicker));
  }
}

bool Scene::tap(int x, int y) {
  // The nearest one, which is drawn last, is hit first.
  const auto hit = std::find_if(lanterns_.rbegin(), lanterns_.rend(), [&](const Lantern& lantern) {
    const auto& sprites = sprites_[lantern.size];
    return !lantern.lit && std::abs(x - xOf(lantern)) <= sprites.width() / 2 &&
           std::abs(y - yOf(lantern)) <= sprites.height() / 2;
  });
  if (hit == lanterns_.rend()) return false;
  hit->lit = true;
  return true;
}

int Scene::litCount() const {
  return static_cast<int>(std::count_if(lanterns_.begin(), lanterns_.end(),
                                        [](const Lantern& lantern) { return lantern.lit; }));
}

}  // namespace lanterns
