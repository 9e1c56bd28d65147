#include <exception>
#include <iostream>

#include "Fonts.h"
#include "Game.h"

int main(int count, char** words) {
  const auto options = lanterns::readOptions(count, words);
  try {
    const sdl::Session session(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER);
    const lanterns::FontSession fonts;
    lanterns::Game(options).run();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
