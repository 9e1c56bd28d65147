#include "service/GameKeys.h"

#include <stdexcept>

namespace zovk::service {
namespace {

constexpr const char* kGamesFile = "games.json";

}  // namespace

GameKeys::GameKeys(const Folder& folder, const std::vector<std::string>& idsAndKeys)
    : folder_(folder) {
  for (const std::string& text : idsAndKeys) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
      throw std::invalid_argument("a game is given as ID=KEY, not \"" + text + "\"");
    }
    given_[text.substr(0, sign)] = text.substr(sign + 1);
  }
}

std::optional<std::string> GameKeys::keyOf(const std::string& gameId) const {
  if (const auto found = given_.find(gameId); found != given_.end()) return found->second;
  const auto games = folder_.readObject(kGamesFile);
  const auto* key = games ? games->if_contains(gameId) : nullptr;
  if (key == nullptr) return std::nullopt;
  if (!key->is_string()) throw FolderError(std::string(kGamesFile) + ": keys are texts");
  return std::string(key->get_string());
}

bool GameKeys::empty() const {
  if (!given_.empty()) return false;
  const auto games = folder_.readObject(kGamesFile);
  return !games || games->empty();
}

}  // namespace zovk::service
