#pragma once

#include <string>

#include "platform/linux/UniqueFd.h"

namespace zovk {

/// A directory of the user's own for temporary files, below $TMPDIR or /tmp; it is made when the
/// first file is, and removed with all it holds at the end of its life. One thread at a time.
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
  std::string path_;
};

}  // namespace zovk
