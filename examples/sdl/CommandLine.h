#pragma once

#include <CLI/CLI.hpp>

namespace sdl {

/// Adds the size of the window to a game's options and reads the command line. Ends the program
/// when it asks for help or cannot be understood.
void readCommandLine(CLI::App& app, int count, const char* const* words, int& width, int& height);

}  // namespace sdl
