#pragma once

#include <cstdint>
#include <memory>

#include <SDL.h>

#include "Options.h"

namespace harbour {

struct SdlDeleter {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};

using WindowPointer = std::unique_ptr<SDL_Window, SdlDeleter>;
using RendererPointer = std::unique_ptr<SDL_Renderer, SdlDeleter>;
using TexturePointer = std::unique_ptr<SDL_Texture, SdlDeleter>;

/// SDL for as long as the object lives.
class SdlSession {
 public:
  SdlSession();
  ~SdlSession();
  SdlSession(const SdlSession&) = delete;
  SdlSession& operator=(const SdlSession&) = delete;
};

/// Ends the program's run with SDL's own words when `good` is false.
void require(bool good, const char* what);

WindowPointer openWindow(const Options& options);

/// The X11 window behind an SDL window, 0 where the display is another one.
std::uint64_t nativeWindowOf(SDL_Window* window);

}  // namespace harbour
