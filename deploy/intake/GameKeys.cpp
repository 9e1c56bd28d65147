#include "GameKeys.h"

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <boost/json/value.hpp>

#include "text/JsonRead.h"

namespace zovk::intake {

namespace {

// Ten thousand games have less.
constexpr std::size_t kLargestFile = 1'048'576;

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(kLargestFile + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (file.gcount() == 0 || file.bad()) throw std::runtime_error("it cannot be read");
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > kLargestFile) throw std::runtime_error("it has more than 1 MiB");
  return text;
}

}  // namespace

GameKeys::GameKeys(std::string path) : path_(std::move(path)) {
  try {
    keys_ = read(path_);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path_ + ": " + error.what());
  }
}

void GameKeys::readAgain() {
  try {
    keys_ = read(path_);
    std::fputs("the keys have been read again\n", stderr);
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "the keys of before stay in force; %s: %s\n", path_.c_str(), error.what());
  }
}

const std::string* GameKeys::keyOf(std::string_view game) const {
  const auto found = keys_.find(game);
  return found == keys_.end() ? nullptr : &found->second;
}

// As at the edge, a game whose key is no text, or an empty one, is unknown.
GameKeys::Keys GameKeys::read(const std::string& path) {
  boost::json::error_code error;
  const boost::json::value games = readJson(contentOf(path), error);
  if (error) throw std::runtime_error("it is no JSON");
  if (!games.is_object()) throw std::runtime_error("it is no object");
  Keys keys;
  for (const auto& [game, key] : games.get_object()) {
    if (!key.is_string() || key.get_string().empty()) continue;
    keys.emplace(game, std::string_view(key.get_string()));
  }
  return keys;
}

}  // namespace zovk::intake
