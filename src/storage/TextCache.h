#pragma once

#include <memory>
#include <string>

#include "storage/FileGlance.h"
#include "storage/RecordText.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// The text of the last requested file, read again only if it has changed: a selection asks the
/// once-record about every popup. Any thread. Refers to the file system and the clock, which must
/// outlive it.
class TextCache {
 public:
  TextCache(FileSystem& files, const Clock& clock) : files_(files), clock_(clock) {}

  /// Returns null if the file cannot be read or is not UTF-8.
  std::shared_ptr<const RecordText> text(const std::string& path, FileGlance& glance);

 private:
  struct Entry {
    std::string path;
    FileIdentity identity;
    std::shared_ptr<const RecordText> text;
  };

  FileSystem& files_;
  const Clock& clock_;
  Mutex mutex_;
  Entry last_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
