#pragma once

#include <memory>
#include <string>
#include <vector>

#include "FramePacer.h"
#include "Hud.h"
#include "Popups.h"
#include "Scene.h"

namespace lanterns {

/// The game: its window, its loop, and what keys and taps do.
class Game {
 public:
  explicit Game(const Options& options);
  void run();

 private:
  void handle(const SDL_Event& event);
  void press(SDL_Keycode key);
  void tap(int x, int y);
  void resize();
  void draw();
  void tell(const std::string& line);
  void tellButtons() const;

  bool tour_;
  WindowPointer window_;
  RendererPointer renderer_;
  Popups popups_;
  std::vector<MenuItem> menu_;
  Hud hud_;
  std::unique_ptr<Scene> scene_;
  FramePacer pacer_;
  bool running_ = true;
};

}  // namespace lanterns
