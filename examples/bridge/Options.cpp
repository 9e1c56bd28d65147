#include "Options.h"

#include <cstdlib>
#include <vector>

#include <CLI/CLI.hpp>

#include "Sdl.h"

namespace harbour {

Options readOptions(int count, const char* const* words) {
  Options options;
  options.resourceDirectory = sdl::programDirectory();
  std::vector<int> size = {options.width, options.height};
  CLI::App app{"Harbour Lights: a harbour, and a shop whose page talks with the game"};
  app.add_option("--size", size, "Size of the window, as 1280x800")
      ->delimiter('x')
      ->expected(2)
      ->check(CLI::Range(320, 16384));
  app.add_option("--player", options.player, "The player's name");
  app.add_option("--data", options.dataDirectory, "Where the player's data lie");
  app.add_option("--look", options.lookFile, "A script that tells what the page shows")
      ->check(CLI::ExistingFile);
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    std::exit(app.exit(error));
  }
  options.width = size[0];
  options.height = size[1];
  return options;
}

}  // namespace harbour
