#pragma once

#include <string>

#include "Sdl.h"

namespace lanterns {

/// What the command line says.
struct Options {
  sdl::WindowOptions window;
  /// Where the fonts and the resource bundle lie: beside the program.
  std::string resourceDirectory;
  /// The player's own data; the library's own choice when empty.
  std::string dataDirectory;
  /// Address of a popup service; without one there are only the popups that the game ships.
  std::string service;
  /// For whoever plays the game by program: the window stands at the top left corner of the screen,
  /// without a frame, and the game tells where its buttons are.
  bool tour = false;
  /// A game pad whose buttons are pressed by lines of standard input.
  bool pad = false;
};

/// Ends the program when the command line asks for help or cannot be understood.
Options readOptions(int count, const char* const* words);

}  // namespace lanterns
