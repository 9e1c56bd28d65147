#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "storage/FileGlance.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// MD5 digests of files. A file is read again only if it has changed. Any thread. Refers to the
/// file system and the clock, which must outlive it.
class DigestCache {
 public:
  DigestCache(FileSystem& files, const Clock& clock) : files_(files), clock_(clock) {}

  /// Returns 32 lower-case hexadecimal digits, or nothing if the file cannot be opened.
  std::optional<std::string> digest(const std::string& path, FileGlance& glance);

 private:
  struct Entry {
    FileIdentity identity;
    std::string digest;
  };
  std::optional<std::string> remembered(const std::string& path, const FileIdentity& identity);
  void remember(const std::string& path, const FileIdentity& identity, const std::string& digest);

  FileSystem& files_;
  const Clock& clock_;
  Mutex mutex_;
  std::unordered_map<std::string, Entry> entries_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
