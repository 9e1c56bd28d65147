#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// What one piece of work has seen of the files: each is looked at once, so that a walk over many
/// popups judges them all by the same state. One thread; refers to the file system.
class FileGlance {
 public:
  explicit FileGlance(const FileSystem& files) : files_(files) {}

  /// Absent when nothing is there.
  const std::optional<FileIdentity>& identity(const std::string& path) {
    const auto [entry, isNew] = seen_.try_emplace(path);
    if (isNew) entry->second = files_.identity(path);
    return entry->second;
  }

 private:
  const FileSystem& files_;
  std::unordered_map<std::string, std::optional<FileIdentity>> seen_;
};

}  // namespace zovk
