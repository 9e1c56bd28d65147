#include "Sdl.h"

#include <stdexcept>
#include <string_view>

namespace sdl {

Session::Session(Uint32 subsystems) {
  // Popups let the game shine through, so the windows must be blended.
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  // A popup takes the keyboard; a game that hides for that would take the popup along.
  SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
  // Popups have no pads of their own: the game hears them without the keyboard, too.
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");  // the first tap after a popup counts, too
  require(SDL_Init(subsystems) == 0, "SDL_Init");
  // Software drawing needs no GL on X11. On Wayland, SDL has no other way to the screen.
  const std::string_view driver = SDL_GetCurrentVideoDriver();
  if (driver == "x11") SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
}

Session::~Session() {
  SDL_Quit();
}

void require(bool good, const char* what) {
  if (!good) throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

WindowPointer openWindow(const char* title, const WindowOptions& options, bool atCorner) {
  const int place = atCorner ? 0 : static_cast<int>(SDL_WINDOWPOS_CENTERED);
  const Uint32 kind = atCorner ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE;
  WindowPointer window(SDL_CreateWindow(title, place, place, options.width, options.height,
                                        kind | options.fullScreen));
  require(window != nullptr, "SDL_CreateWindow");
  return window;
}

RendererPointer openRenderer(SDL_Window* window) {
  RendererPointer renderer(SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE));
  require(renderer != nullptr, "SDL_CreateRenderer");
  return renderer;
}

std::optional<bool> keyboardIn(const SDL_Event& event) {
  if (event.type != SDL_WINDOWEVENT) return std::nullopt;
  if (event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED) return true;
  if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) return false;
  return std::nullopt;
}

std::string programDirectory() {
  char* const path = SDL_GetBasePath();
  const std::string directory = path != nullptr ? path : "";
  SDL_free(path);
  return directory;
}

}  // namespace sdl
