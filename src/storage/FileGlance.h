#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// The state of the files during one piece of work. Each file is examined once, so that a walk over
/// many popups judges them all by the same state. One thread; refers to the file system.
class FileGlance {
 public:
  explicit FileGlance(const FileSystem& files) : files_(files) {}

  /// Returns the identity of a file, or nothing if it does not exist.
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
