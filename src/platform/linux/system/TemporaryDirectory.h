#pragma once

#include <string>

#include "support/UniqueFd.h"

namespace zovk {

/// A directory of the user's own for temporary files, below $TMPDIR or /tmp; it is made when the
/// first file is, and removed with all it holds at the end of its life. A lock is held on it for as
/// long, so that those of games that were killed can be told apart: they are removed, too, when one
/// is made. One thread at a time.
class TemporaryDirectory {
 public:
  TemporaryDirectory() = default;
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  /// A new, empty file open for writing, readable by the user alone; `path` receives its path.
  /// No descriptor when it cannot be made; errno tells why.
  UniqueFd makeFile(std::string& path);
  /// Empty before the first file.
  const std::string& path() const { return path_; }

 private:
  bool make();

  std::string path_;
  UniqueFd lock_;
};

}  // namespace zovk
