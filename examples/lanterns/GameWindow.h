#pragma once

#include <cstdint>

#include "Options.h"
#include "SdlHandles.h"

namespace lanterns {

WindowPointer openWindow(const Options& options);

/// The X11 window behind an SDL window, 0 where the display is another one.
std::uint64_t nativeWindowOf(SDL_Window* window);

}  // namespace lanterns
