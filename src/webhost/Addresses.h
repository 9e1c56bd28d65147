#pragma once

#include <string>

namespace zovk {

/// How the engine writes addresses and how the game wrote them. The engine escapes what stands in
/// a file's path; the game compares addresses with the paths that it knows.
class Addresses {
 public:
  /// The game has asked for `written`, which the engine calls `escaped`.
  void remember(const std::string& written, const std::string& escaped);
  /// An address of the engine as the game would write it.
  std::string asWritten(const std::string& address) const;

 private:
  std::string written_;
  std::string escaped_;
};

}  // namespace zovk
