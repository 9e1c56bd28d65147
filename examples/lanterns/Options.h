#pragma once

#include <string>

#include "Sdl.h"

namespace lanterns {

/// The options of the command line.
struct Options {
  sdl::WindowOptions window;
  /// The folder of the fonts and the resource bundle, which is the program's.
  std::string resourceDirectory;
  /// The folder of the player's data; if empty, the library's choice.
  std::string dataDirectory;
  /// The address of a popup service; without one there are only the popups shipped with the game.
  std::string service;
  /// For tests that play the game: the window is at the top left corner of the screen, without a
  /// frame, and the game prints where its buttons are.
  bool tour = false;
  /// Adds a game pad whose buttons are pressed by lines of standard input.
  bool pad = false;
};

/// Ends the program when the command line asks for help or cannot be understood.
Options readOptions(int count, const char* const* words);

}  // namespace lanterns
