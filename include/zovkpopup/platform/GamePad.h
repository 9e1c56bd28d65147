#pragma once

#include <cstdint>

namespace zovk {

/// What a player asks of a popup with a game pad.
enum class ZOVKPopupGamePad : std::uint8_t {
  kUp,  ///< Direction pad or stick: the focus goes to what lies there.
  kDown,
  kLeft,
  kRight,
  kPress,  ///< Presses what has the focus.
  kLeave,  ///< Does what the escape key does.
};

}  // namespace zovk
