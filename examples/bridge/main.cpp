#include <exception>
#include <iostream>

#include "Game.h"

int main(int count, char** words) {
  const auto options = harbour::readOptions(count, words);
  if (!options) return 2;
  try {
    const harbour::SdlSession session;
    harbour::Game(*options).run();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
