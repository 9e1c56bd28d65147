#pragma once

#include <optional>
#include <string>

namespace lanterns {

/// What the command line says.
struct Options {
  int width = 1280;
  int height = 800;
  /// Where the fonts and the resource bundle lie: beside the program.
  std::string resourceDirectory;
  /// The player's own data; the library's own choice when empty.
  std::string dataDirectory;
  /// Address of a popup service; without one there are only the popups that the game ships.
  std::string service;
  /// Without a window frame, at the top left corner of the screen.
  bool frameless = false;
};

/// Nothing, after a line on standard error, when the command line cannot be understood.
std::optional<Options> readOptions(int count, char** words);

}  // namespace lanterns
