#pragma once

#include <string>

#include "Sdl.h"

namespace harbour {

/// What the command line says.
struct Options {
  sdl::WindowOptions window;
  std::string player = "Mira";
  /// The player's own data; the library's own choice when empty.
  std::string dataDirectory;
  /// Where the page lies: beside the program.
  std::string resourceDirectory;
  /// For whoever plays by program: a script file that tells what the page shows. Its result is
  /// written whenever it changes, and the window stands at the corner of the screen without a
  /// frame.
  std::string lookFile;
};

/// Ends the program when the command line asks for help or cannot be understood.
Options readOptions(int count, const char* const* words);

}  // namespace harbour
