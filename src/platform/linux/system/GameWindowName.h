#pragma once

#include <cstdint>
#include <string>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The display system's name for the game's window; at most one of the two is set.
struct GameWindowName {
  std::uint64_t x11 = 0;
  std::string wayland;
};

/// Returns the name that the settings give. A text of another form is ignored, with one error line.
GameWindowName gameWindowName(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
