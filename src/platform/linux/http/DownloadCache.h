#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/linux/settings/SqliteFile.h"

namespace zovk {

/// The marks by which a server tells one version of a file from the next; empty if it gave none.
struct Validators {
  std::string entityTag;
  std::string lastModified;

  bool empty() const { return entityTag.empty() && lastModified.empty(); }
};

/// Keeps the bodies of downloads with their validators, in one SQLite file that several processes
/// may share. The cache is only a help: an entry that cannot be read or written counts as not kept,
/// and a file that is not a database is replaced. One thread.
class DownloadCache {
 public:
  /// Above this size the entries that were not used for longest are removed. That may wait until
  /// the bytes of one large body have been added.
  static constexpr std::size_t kMostBytes = 64U * 1024 * 1024;
  /// A larger body is not kept.
  static constexpr std::size_t kLargestBody = 8U * 1024 * 1024;

  /// The first call opens the file; an empty path keeps nothing.
  explicit DownloadCache(std::string path);

  std::optional<Validators> validators(const std::string& url);
  /// Returns the body that was kept with exactly these validators.
  std::optional<std::string> body(const std::string& url, const Validators& validators);
  void keep(const std::string& url, const Validators& validators, const std::string& body);

 private:
  void run(const char* sql, const SqliteFile::Bind& bind, const SqliteFile::Row& row);
  void removeOldest(std::size_t added);

  SqliteFile file_;
  std::size_t addedSinceRemoving_ = kLargestBody;  // so that the first one looks
};

}  // namespace zovk
