#pragma once

#include <memory>

#include "Sdl.h"

namespace lanterns {

/// The pointer for game pads and the arrow keys: it flies in the given direction, and taps the
/// thing below it. It is hidden until it is used, and again when the mouse is.
class Firefly {
 public:
  explicit Firefly(SDL_Renderer* renderer);

  /// Returns true if the event asks for a tap at `place`.
  bool handle(const SDL_Event& event);
  void update(double seconds, int width, int height);
  void draw() const;
  SDL_Point place() const { return {static_cast<int>(x_), static_cast<int>(y_)}; }
  /// Stops it where it is.
  void rest() { pushX_ = pushY_ = 0; }

 private:
  bool handleKey(SDL_Keycode key, bool down);
  void push(float& direction, float amount);

  struct CloseController {
    void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
  };

  SDL_Renderer* renderer_;
  sdl::TexturePointer glow_;
  std::unique_ptr<SDL_GameController, CloseController> controller_;
  float x_ = 0;
  float y_ = 0;
  float pushX_ = 0;  // -1 to 1
  float pushY_ = 0;
  bool placed_ = false;
  bool seen_ = false;
};

}  // namespace lanterns
