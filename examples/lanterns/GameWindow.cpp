#include "GameWindow.h"

#include <SDL_syswm.h>

namespace lanterns {

WindowPointer openWindow(const Options& options) {
  const int place = options.tour ? 0 : static_cast<int>(SDL_WINDOWPOS_CENTERED);
  const Uint32 kind = options.tour ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE;
  WindowPointer window(
      SDL_CreateWindow("Lanterns", place, place, options.width, options.height, kind));
  require(window != nullptr, "SDL_CreateWindow");
  return window;
}

std::uint64_t nativeWindowOf(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  const bool known = SDL_GetWindowWMInfo(window, &info) == SDL_TRUE;
  return known && info.subsystem == SDL_SYSWM_X11 ? info.info.x11.window : 0;
}

}  // namespace lanterns
