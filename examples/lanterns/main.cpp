#include <exception>
#include <iostream>

#include "Game.h"

int main(int count, char** words) {
  const auto options = lanterns::readOptions(count, words);
  if (!options) return 2;
  try {
    const lanterns::SdlSession session;
    lanterns::Game(*options).run();
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
