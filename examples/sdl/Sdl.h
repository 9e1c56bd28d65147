#pragma once

#include <cstdint>
#include <memory>
#include <optional>
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

/// What a player says of a game's window.
struct WindowOptions {
  int width = 1280;
  int height = 800;
  /// The flag of SDL's for a window that fills the screen, 0 for one that does not.
  Uint32 fullScreen = 0;
};

/// A window for a person, or, `atCorner`, for whoever plays by program: at the top left corner of
/// the screen and without a frame.
WindowPointer openWindow(const char* title, const WindowOptions& options, bool atCorner);

/// A renderer without an engine's demands: what is drawn is light, and so the same everywhere.
RendererPointer openRenderer(SDL_Window* window);

/// What an event says of the keyboard: true when the window took it, false when it lost it, nothing
/// for any other event.
std::optional<bool> keyboardIn(const SDL_Event& event);

/// Where the program lies, with a slash at its end.
std::string programDirectory();

}  // namespace sdl
