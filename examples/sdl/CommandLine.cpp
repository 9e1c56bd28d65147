#include "CommandLine.h"

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace sdl {

void readCommandLine(CLI::App& app, int count, const char* const* words, WindowOptions& window) {
  std::vector<int> size = {window.width, window.height};
  app.add_option("--size", size, "Size of the window, as 1280x800")
      ->delimiter('x')
      ->expected(2)
      ->check(CLI::Range(320, 16384));
  const std::map<std::string, Uint32> kinds = {{"desktop", SDL_WINDOW_FULLSCREEN_DESKTOP},
                                               {"exclusive", SDL_WINDOW_FULLSCREEN}};
  app.add_option("--full-screen", window.fullScreen,
                 "Fill the screen: as large as the desktop, or exclusive in a mode of that size")
      ->transform(CLI::CheckedTransformer(kinds));
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    std::exit(app.exit(error));
  }
  window.width = size[0];
  window.height = size[1];
}

}  // namespace sdl
