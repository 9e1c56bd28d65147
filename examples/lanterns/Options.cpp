#include "Options.h"

#include "CommandLine.h"

namespace lanterns {

Options readOptions(int count, const char* const* words) {
  Options options;
  options.resourceDirectory = sdl::programDirectory();
  CLI::App app{"Lanterns: a quiet evening at a lake, with popups"};
  app.add_option("--data", options.dataDirectory, "Where the player's data lie");
  app.add_option("--service", options.service, "Address of a popup service");
  app.add_flag("--tour", options.tour, "For whoever plays by program");
  app.add_flag("--pad", options.pad, "A game pad that lines of standard input press");
  sdl::readCommandLine(app, count, words, options.window);
  return options;
}

}  // namespace lanterns
