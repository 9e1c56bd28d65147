#include "Options.h"

#include "CommandLine.h"

namespace harbour {

Options readOptions(int count, const char* const* words) {
  Options options;
  options.resourceDirectory = sdl::programDirectory();
  CLI::App app{"Harbour Lights: a harbour, and a shop whose page talks with the game"};
  app.add_option("--player", options.player, "The player's name");
  app.add_option("--data", options.dataDirectory, "Where the player's data lie");
  app.add_option("--look", options.lookFile, "A script that tells what the page shows")
      ->check(CLI::ExistingFile);
  sdl::readCommandLine(app, count, words, options.window);
  return options;
}

}  // namespace harbour
