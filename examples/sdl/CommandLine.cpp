#include "CommandLine.h"

#include <cstdlib>
#include <vector>

namespace sdl {

void readCommandLine(CLI::App& app, int count, const char* const* words, int& width, int& height) {
  std::vector<int> size = {width, height};
  app.add_option("--size", size, "Size of the window, as 1280x800")
      ->delimiter('x')
      ->expected(2)
      ->check(CLI::Range(320, 16384));
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    std::exit(app.exit(error));
  }
  width = size[0];
  height = size[1];
}

}  // namespace sdl
