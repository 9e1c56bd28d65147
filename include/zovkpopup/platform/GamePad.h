#pragma once

#include <cstdint>

namespace zovk {

/// The meaning of a press on a game pad.
enum class ZOVKPopupGamePad : std::uint8_t {
  kUp,  ///< Moves the focus to the next place in this direction.
  kDown,
  kLeft,
  kRight,
  kPress,  ///< Presses the element that has the focus.
  kLeave,  ///< Does what the escape key does.
};

}  // namespace zovk
