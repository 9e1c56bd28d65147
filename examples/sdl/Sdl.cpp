#include "Sdl.h"

#include <stdexcept>

#include <SDL_syswm.h>

namespace sdl {

Session::Session(Uint32 subsystems) {
  // Popups let the game shine through, so the windows must be blended.
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");  // the first tap after a popup counts, too
  require(SDL_Init(subsystems) == 0, "SDL_Init");
}

Session::~Session() {
  SDL_Quit();
}

void require(bool good, const char* what) {
  if (!good) throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

WindowPointer openWindow(const char* title, int width, int height, bool atCorner) {
  const int place = atCorner ? 0 : static_cast<int>(SDL_WINDOWPOS_CENTERED);
  const Uint32 kind = atCorner ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE;
  WindowPointer window(SDL_CreateWindow(title, place, place, width, height, kind));
  require(window != nullptr, "SDL_CreateWindow");
  return window;
}

std::uint64_t nativeWindowOf(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  const bool known = SDL_GetWindowWMInfo(window, &info) == SDL_TRUE;
  return known && info.subsystem == SDL_SYSWM_X11 ? info.info.x11.window : 0;
}

std::string programDirectory() {
  char* const path = SDL_GetBasePath();
  const std::string directory = path != nullptr ? path : "";
  SDL_free(path);
  return directory;
}

}  // namespace sdl
