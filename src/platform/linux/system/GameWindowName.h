#pragma once

#include <cstdint>
#include <string>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// How the display system calls the game's window; one of the two at the most.
struct GameWindowName {
  std::uint64_t x11 = 0;
  std::string wayland;
};

/// What the settings say. A text of another form counts for nothing, with one error line.
GameWindowName gameWindowName(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
