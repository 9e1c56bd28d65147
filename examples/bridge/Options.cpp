#include "Options.h"

#include <cstdio>
#include <string_view>

#include <SDL.h>

namespace harbour {
namespace {

constexpr const char* kUsage =
    "usage: lantern-shop [--size WIDTHxHEIGHT] [--player NAME] [--data DIRECTORY] [--look FILE]\n";

bool readSize(const char* text, Options& options) {
  return std::sscanf(text, "%dx%d", &options.width, &options.height) == 2 && options.width >= 320 &&
         options.height >= 320;
}

bool readPair(std::string_view name, const char* value, Options& options) {
  if (name == "--size") return readSize(value, options);
  std::string* const place = name == "--player" ? &options.player
                             : name == "--data" ? &options.dataDirectory
                             : name == "--look" ? &options.lookFile
                                                : nullptr;
  if (place != nullptr) *place = value;
  return place != nullptr;
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
  for (int i = 1; i < count; i += 2) {
    if (i + 1 >= count || !readPair(words[i], words[i + 1], options)) {
      std::fputs(kUsage, stderr);
      return std::nullopt;
    }
  }
  return options;
}

}  // namespace harbour
