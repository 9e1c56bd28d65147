#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <SDL.h>

/// What the example games share: SDL's objects as C++ owns them, and a window for popups to stand
/// in front of.
namespace sdl {

struct Deleter {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

using WindowPointer = std::unique_ptr<SDL_Window, Deleter>;
using RendererPointer = std::unique_ptr<SDL_Renderer, Deleter>;
using TexturePointer = std::unique_ptr<SDL_Texture, Deleter>;
using SurfacePointer = std::unique_ptr<SDL_Surface, Deleter>;

/// SDL for as long as the object lives.
class Session {
 public:
  explicit Session(Uint32 subsystems);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

/// Ends the program's run with SDL's own words when `good` is false.
void require(bool good, const char* what);

/// A window for a person, or, `atCorner`, for whoever plays by program: at the top left corner of
/// the screen and without a frame.
WindowPointer openWindow(const char* title, int width, int height, bool atCorner);

/// The X11 window behind an SDL window, 0 where the display is another one.
std::uint64_t nativeWindowOf(SDL_Window* window);

/// Where the program lies, with a slash at its end.
std::string programDirectory();

}  // namespace sdl
