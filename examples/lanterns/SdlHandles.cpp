#include "SdlHandles.h"

#include <stdexcept>
#include <string>

namespace lanterns {

void require(bool good, const char* what) {
  if (!good) throw std::runtime_error(std::string(what) + ": " + SDL_GetError());
}

SdlSession::SdlSession() {
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR,
              "0");  // popups let the game shine through
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");  // the first tap after a popup counts, too
  require(SDL_Init(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER) == 0, "SDL_Init");
  require(TTF_Init() == 0, "TTF_Init");
}

SdlSession::~SdlSession() {
  TTF_Quit();
  SDL_Quit();
}

}  // namespace lanterns
