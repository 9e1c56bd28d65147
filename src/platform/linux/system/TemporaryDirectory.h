#pragma once

#include <string>

#include "support/UniqueFd.h"

namespace zovk {

/// A private directory for temporary files, below $TMPDIR or /tmp. It is made with the first file,
/// and removed with its contents at the end of its life. As long as it lives it holds a lock. So
/// the directories of killed games can be recognised, and are removed when a new one is made. One
/// thread at a time.
class TemporaryDirectory {
 public:
  TemporaryDirectory() = default;
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  /// Makes a new, empty file open for writing, which only the user can read; `path` receives its
  /// path. Returns no descriptor if that fails; errno says why.
  UniqueFd makeFile(std::string& path);
  /// Empty before the first file.
  const std::string& path() const { return path_; }

 private:
  bool make();

  std::string path_;
  UniqueFd lock_;
};

}  // namespace zovk
