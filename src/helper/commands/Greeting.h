#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "helper/Drawing.h"
#include "helper/commands/Arguments.h"

namespace zovk::helper {

/// The game's settings for the helper.
struct Greeting {
  std::string application;
  std::string dataDirectory;
  unsigned long nativeWindow = 0;
  bool developerTools = false;
  std::int64_t pageMemory = 0;    ///< In megabytes.
  std::string waylandWindow{};    ///< The exported handle of the game's window; empty for none.
  Frame gameSize{};               ///< In logical pixels; empty if the game did not report it.
  std::optional<bool> gameKey{};  ///< Whether it has the keyboard, if the game has reported it.
  std::string display{};          ///< The display system to use, "x11" or "wayland"; empty for any.
  DrawingWish drawing{};
  bool wholeScreen = false;  ///< Popups take the whole screen, whatever the game's size.
  bool pageConsole = false;  ///< Pages' console lines go to standard output.
};

/// Reads the game's first command, except for the wish for a kind of window.
Greeting readGreeting(const Arguments& arguments);

}  // namespace zovk::helper
