#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <SDL.h>

/// The common parts of the example games: SDL's objects, owned the C++ way, and a window for popups
/// to stand in front of.
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

/// Starts SDL for as long as the object lives.
class Session {
 public:
  explicit Session(Uint32 subsystems);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

/// Ends the program with SDL's message if `good` is false.
void require(bool good, const char* what);

/// The player's options for a game's window.
struct WindowOptions {
  int width = 1280;
  int height = 800;
  /// SDL's flag for a window that fills the screen, or 0.
  Uint32 fullScreen = 0;
};

/// Opens a window for a person or, with `atCorner`, for tests: at the top left corner of the screen
/// and without a frame.
WindowPointer openWindow(const char* title, const WindowOptions& options, bool atCorner);

/// Opens a renderer. The games draw little, so it draws in software, the same everywhere.
RendererPointer openRenderer(SDL_Window* window);

/// Returns true if the event says that the window took the keyboard, false if it lost it, and
/// nothing for any other event.
std::optional<bool> keyboardIn(const SDL_Event& event);

/// Returns the program's directory, with a slash at its end.
std::string programDirectory();

}  // namespace sdl
