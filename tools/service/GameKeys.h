#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "service/Folder.h"

namespace zovk::service {

/// The keys of the games: those given at the start, then those of `games.json`.
class GameKeys {
 public:
  /// Throws std::invalid_argument if a text is not ID=KEY.
  GameKeys(const Folder& folder, const std::vector<std::string>& idsAndKeys);

  std::optional<std::string> keyOf(const std::string& gameId) const;
  bool empty() const;

 private:
  const Folder& folder_;
  std::map<std::string, std::string> given_;
};

}  // namespace zovk::service
