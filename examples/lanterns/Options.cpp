#include "Options.h"

#include <cstdlib>
#include <vector>

#include <CLI/CLI.hpp>

#include "Sdl.h"

namespace lanterns {

Options readOptions(int count, const char* const* words) {
  Options options;
  options.resourceDirectory = sdl::programDirectory();
  std::vector<int> size = {options.width, options.height};
  CLI::App app{"Lanterns: a quiet evening at a lake, with popups"};
  app.add_option("--size", size, "Size of the window, as 1280x800")
      ->delimiter('x')
      ->expected(2)
      ->check(CLI::Range(320, 16384));
  app.add_option("--data", options.dataDirectory, "Where the player's data lie");
  app.add_option("--service", options.service, "Address of a popup service");
  app.add_flag("--tour", options.tour, "For whoever plays by program");
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    std::exit(app.exit(error));
  }
  options.width = size[0];
  options.height = size[1];
  return options;
}

}  // namespace lanterns
