#pragma once

#include <functional>
#include <vector>

#include <SDL.h>

#include "Statistics.h"

namespace zovk {

/// A small SDL game: 60 frames a second of moving rectangles, the popups pumped once a frame.
/// It measures the work of each frame, without the wait for the next one.
class GameLoop {
 public:
  GameLoop();
  ~GameLoop();
  GameLoop(const GameLoop&) = delete;
  GameLoop& operator=(const GameLoop&) = delete;

  /// Runs frames until `done`, for 20 seconds at most; returns each frame's work in milliseconds.
  std::vector<double> runUntil(const std::function<bool()>& done);
  std::vector<double> runFrames(int count);
  unsigned long nativeWindow() const;
  /// Fills a screen of that size, as a game does after a turn.
  void fill(int width, int height);
  /// Goes full screen. Returns the screen's size.
  SDL_Point fillScreen();

 private:
  double frame();

  SDL_Window* window_ = nullptr;
  SDL_Renderer* renderer_ = nullptr;
  int number_ = 0;
};

}  // namespace zovk
