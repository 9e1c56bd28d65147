#include "Options.h"

#include <cstdio>
#include <string_view>

#include <SDL.h>

namespace lanterns {
namespace {

constexpr const char* kUsage =
    "usage: lanterns [--size WIDTHxHEIGHT] [--data DIRECTORY] [--service ADDRESS] [--tour]\n";

bool readSize(const char* text, Options& options) {
  return std::sscanf(text, "%dx%d", &options.width, &options.height) == 2 && options.width >= 320 &&
         options.height >= 320;
}

bool readPair(std::string_view name, const char* value, Options& options) {
  if (name == "--size") return readSize(value, options);
  if (name == "--data") options.dataDirectory = value;
  if (name == "--service") options.service = value;
  return name == "--data" || name == "--service";
}

std::string programDirectory() {
  char* const path = SDL_GetBasePath();
  const std::string directory = path != nullptr ? path : "";
  SDL_free(path);
  return directory;
}

}  // namespace

std::optional<Options> readOptions(int count, char** words) {
  Options options;
  options.resourceDirectory = programDirectory();
  for (int i = 1; i < count; ++i) {
    if (std::string_view(words[i]) == "--tour") {
      options.tour = true;
    } else if (i + 1 >= count || !readPair(words[i], words[i + 1], options)) {
      std::fputs(kUsage, stderr);
      return std::nullopt;
    } else {
      ++i;
    }
  }
  return options;
}

}  // namespace lanterns
