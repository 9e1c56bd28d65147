#include "Firefly.h"

#include <algorithm>
#include <cmath>

#include "Painting.h"

namespace lanterns {
namespace {

constexpr int kSize = 44;
constexpr float kSpeed = 620;      // pixels a second
constexpr float kDeadZone = 0.2F;  // sticks are never quite at rest

float stick(Sint16 value) {
  const float amount = static_cast<float>(value) / 32767.0F;
  return std::abs(amount) < kDeadZone ? 0 : amount;
}

}  // namespace

Firefly::Firefly(SDL_Renderer* renderer)
    : renderer_(renderer), glow_(paint(renderer, kSize, kSize, [](float x, float y) {
        const float distance = std::hypot(x - kSize / 2.0F, y - kSize / 2.0F);
        const float glow = 0.55F * (1 - smooth(4, kSize / 2.0F, distance));
        return rgb(0xE9FFB0, std::max(glow, 1 - smooth(4, 6, distance)));
      })) {}

bool Firefly::handle(const SDL_Event& event) {
  switch (event.type) {
    case SDL_CONTROLLERDEVICEADDED:
      if (!controller_) controller_.reset(SDL_GameControllerOpen(event.cdevice.which));
      return false;
    case SDL_CONTROLLERDEVICEREMOVED:
      controller_.reset();
      rest();
      return false;
    case SDL_CONTROLLERAXISMOTION:
      if (event.caxis.axis == SDL_CONTROLLER_AXIS_LEFTX) push(pushX_, stick(event.caxis.value));
      if (event.caxis.axis == SDL_CONTROLLER_AXIS_LEFTY) push(pushY_, stick(event.caxis.value));
      return false;
    case SDL_CONTROLLERBUTTONDOWN:
      return seen_ && event.cbutton.button == SDL_CONTROLLER_BUTTON_A;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      return handleKey(event.key.keysym.sym, event.type == SDL_KEYDOWN);
    case SDL_MOUSEBUTTONDOWN:
      seen_ = false;
      return false;
    default:
      return false;
  }
}

bool Firefly::handleKey(SDL_Keycode key, bool down) {
  const float amount = down ? 1 : 0;
  if (key == SDLK_LEFT) push(pushX_, -amount);
  if (key == SDLK_RIGHT) push(pushX_, amount);
  if (key == SDLK_UP) push(pushY_, -amount);
  if (key == SDLK_DOWN) push(pushY_, amount);
  return seen_ && down && (key == SDLK_SPACE || key == SDLK_RETURN);
}

void Firefly::push(float& direction, float amount) {
  direction = amount;
  if (amount != 0) seen_ = true;
}

void Firefly::update(double seconds, int width, int height) {
  if (!placed_) x_ = static_cast<float>(width) / 2;
  if (!placed_) y_ = static_cast<float>(height) / 2;
  placed_ = true;
  const float step = kSpeed * static_cast<float>(seconds);
  x_ = std::clamp(x_ + pushX_ * step, 0.0F, static_cast<float>(width));
  y_ = std::clamp(y_ + pushY_ * step, 0.0F, static_cast<float>(height));
}

void Firefly::draw() const {
  if (!seen_) return;
  const SDL_Rect place{static_cast<int>(x_) - kSize / 2, static_cast<int>(y_) - kSize / 2, kSize,
                       kSize};
  SDL_RenderCopy(renderer_, glow_.get(), nullptr, &place);
}

}  // namespace lanterns
