#pragma once

#include <memory>

#include <SDL_ttf.h>

#include "Sdl.h"

namespace lanterns {

struct CloseFont {
  void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};

using FontPointer = std::unique_ptr<TTF_Font, CloseFont>;

/// Fonts can be opened for as long as the object lives.
class FontSession {
 public:
  FontSession() { sdl::require(TTF_Init() == 0, "TTF_Init"); }
  ~FontSession() { TTF_Quit(); }
  FontSession(const FontSession&) = delete;
  FontSession& operator=(const FontSession&) = delete;
};

}  // namespace lanterns
