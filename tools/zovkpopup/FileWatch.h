#pragma once

#include <filesystem>
#include <string>

#include "support/UniqueFd.h"

namespace zovk::tool {

/// Notices that a file was written or replaced, as editors do when they save.
class FileWatch {
 public:
  /// Throws ToolError if the file's folder cannot be watched.
  explicit FileWatch(const std::filesystem::path& file);

  /// Returns a descriptor that is readable when something changed in the folder.
  int descriptor() const { return notifier_.get(); }
  /// Returns whether the file changed since the last call.
  bool changed();

 private:
  std::string name_;
  UniqueFd notifier_;
};

}  // namespace zovk::tool
