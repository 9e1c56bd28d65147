#pragma once

#include <string>

#include "Sdl.h"

namespace harbour {

/// The options of the command line.
struct Options {
  sdl::WindowOptions window;
  std::string player = "Mira";
  /// The folder of the player's data; if empty, the library's choice.
  std::string dataDirectory;
  /// The folder of the page, which is the program's.
  std::string resourceDirectory;
  /// For tests that play the game: a script file that reads the page's state. Its result is written
  /// whenever it changes, and the window is at the corner of the screen, without a frame.
  std::string lookFile;
};

/// Ends the program when the command line asks for help or cannot be understood.
Options readOptions(int count, const char* const* words);

}  // namespace harbour
