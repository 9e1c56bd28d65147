#include "GameLoop.h"

#include <cstdio>
#include <cstdlib>

#include <SDL_syswm.h>

#include "zovkpopup/Host.h"

namespace zovk {
namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 800;
constexpr Milliseconds kFrameTime{1000.0 / 60};

}  // namespace

GameLoop::GameLoop() {
  if (SDL_Init(SDL_INIT_VIDEO) != 0) {
    std::fprintf(stderr, "SDL: %s\n", SDL_GetError());
    std::exit(1);
  }
  // Otherwise SDL shows what the processor drew by OpenGL, which is software too where no GPU is,
  // and takes all processors for it.
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  window_ = SDL_CreateWindow("game", 0, 0, kWidth, kHeight, SDL_WINDOW_SHOWN);
  renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_SOFTWARE);
}

GameLoop::~GameLoop() {
  SDL_DestroyRenderer(renderer_);
  SDL_DestroyWindow(window_);
  SDL_Quit();
}

unsigned long GameLoop::nativeWindow() const {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  return SDL_GetWindowWMInfo(window_, &info) == SDL_TRUE ? info.info.x11.window : 0;
}

void GameLoop::fill(int width, int height) {
  SDL_SetWindowSize(window_, width, height);
  SDL_SetWindowPosition(window_, 0, 0);
}

SDL_Point GameLoop::fillScreen() {
  SDL_Rect screen{};
  if (SDL_GetDisplayBounds(0, &screen) != 0 ||
      SDL_SetWindowFullscreen(window_, SDL_WINDOW_FULLSCREEN_DESKTOP) != 0) {
    std::fprintf(stderr, "SDL: %s\n", SDL_GetError());
    std::exit(1);
  }
  return {screen.w, screen.h};
}

double GameLoop::frame() {
  const auto start = std::chrono::steady_clock::now();
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) {
  }
  ZOVKPopupHost::pump();
  SDL_SetRenderDrawColor(renderer_, 20, 24, 40, 255);
  SDL_RenderClear(renderer_);
  for (int i = 0; i < 40; ++i) {
    const SDL_Rect box{(i * 31 + number_ * 2) % kWidth, (i * 47) % kHeight, 60, 60};
    SDL_SetRenderDrawColor(renderer_, static_cast<Uint8>(80 + i * 4), 120, 180, 255);
    SDL_RenderFillRect(renderer_, &box);
  }
  SDL_RenderPresent(renderer_);
  ++number_;
  const Milliseconds work = std::chrono::steady_clock::now() - start;
  if (work < kFrameTime) SDL_Delay(static_cast<Uint32>((kFrameTime - work).count()));
  return work.count();
}

std::vector<double> GameLoop::runUntil(const std::function<bool()>& done) {
  std::vector<double> work;
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) {
      std::fprintf(stderr, "a popup did not come up or did not answer\n");
      std::exit(1);
    }
    work.push_back(frame());
  }
  return work;
}

std::vector<double> GameLoop::runFrames(int count) {
  return runUntil([&, left = count]() mutable { return left-- == 0; });
}

}  // namespace zovk
