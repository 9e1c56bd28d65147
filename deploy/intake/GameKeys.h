#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace zovk::intake {

/// The keys of the games, from the file that the edge reads, too: `{"1001": "s3cret-key"}`.
class GameKeys {
 public:
  /// Throws std::runtime_error if the file cannot be used.
  explicit GameKeys(std::string path);

  /// Reads the file again. If it cannot be used, the keys stay and a line is logged.
  void readAgain();

  /// Returns nullptr for an unknown game. The key is valid until the file is read again.
  const std::string* keyOf(std::string_view game) const;

 private:
  using Keys = std::map<std::string, std::string, std::less<>>;

  static Keys read(const std::string& path);

  const std::string path_;
  Keys keys_;
};

}  // namespace zovk::intake
