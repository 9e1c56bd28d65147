#include <exception>
#include <iostream>

#include "Game.h"

int main(int count, char** words) {
  const auto options = harbour::readOptions(count, words);
  try {
    const sdl::Session session(SDL_INIT_VIDEO);
    harbour::Game(options).run();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
