#pragma once

#include <memory>

#include <SDL.h>
#include <SDL_ttf.h>

namespace lanterns {

struct SdlDeleter {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
  void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};

using WindowPointer = std::unique_ptr<SDL_Window, SdlDeleter>;
using RendererPointer = std::unique_ptr<SDL_Renderer, SdlDeleter>;
using TexturePointer = std::unique_ptr<SDL_Texture, SdlDeleter>;
using SurfacePointer = std::unique_ptr<SDL_Surface, SdlDeleter>;
using FontPointer = std::unique_ptr<TTF_Font, SdlDeleter>;

/// SDL and its fonts for as long as the object lives.
class SdlSession {
 public:
  SdlSession();
  ~SdlSession();
  SdlSession(const SdlSession&) = delete;
  SdlSession& operator=(const SdlSession&) = delete;
};

/// Ends the program's run with SDL's own words when `good` is false.
void require(bool good, const char* what);

}  // namespace lanterns
