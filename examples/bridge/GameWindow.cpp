#include "GameWindow.h"

#include <stdexcept>

#include <SDL_syswm.h>

namespace harbour {

SdlSession::SdlSession() {
  // The harbour is seen around the shop, so the windows must be blended.
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  require(SDL_Init(SDL_INIT_VIDEO) == 0, "SDL_Init");
}

SdlSession::~SdlSession() {
  SDL_Quit();
}

void require(bool good, const char* what) {
  if (!good) throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

WindowPointer openWindow(const Options& options) {
  const bool watched = !options.lookFile.empty();
  const int place = watched ? 0 : static_cast<int>(SDL_WINDOWPOS_CENTERED);
  const Uint32 kind = watched ? SDL_WINDOW_BORDERLESS : SDL_WINDOW_RESIZABLE;
  WindowPointer window(
      SDL_CreateWindow("Harbour Lights", place, place, options.width, options.height, kind));
  require(window != nullptr, "SDL_CreateWindow");
  return window;
}

std::uint64_t nativeWindowOf(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  const bool known = SDL_GetWindowWMInfo(window, &info) == SDL_TRUE;
  return known && info.subsystem == SDL_SYSWM_X11 ? info.info.x11.window : 0;
}

}  // namespace harbour
