#pragma once

#include <CLI/CLI.hpp>

#include "Sdl.h"

namespace sdl {

/// Adds the options for the window to a game's options, and reads the command line. Ends the
/// program if it asks for help or cannot be understood.
void readCommandLine(CLI::App& app, int count, const char* const* words, WindowOptions& window);

}  // namespace sdl
