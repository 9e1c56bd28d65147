#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/linux/settings/SqliteFile.h"

namespace zovk {

/// What a server gave to tell one version of a file from the next; empty where it gave nothing.
struct Validators {
  std::string entityTag;
  std::string lastModified;

  bool empty() const { return entityTag.empty() && lastModified.empty(); }
};

/// Keeps the bodies of downloads with their validators, in one SQLite file that several processes
/// may share. It is only ever a help: what cannot be read or written counts as not kept, and a file
/// that is no database is begun afresh. One thread.
class DownloadCache {
 public:
  /// What was not used for longest goes when there is more than this, which may take until as much
  /// as a large body was added.
  static constexpr std::size_t kMostBytes = 64U * 1024 * 1024;
  /// A larger body is not kept.
  static constexpr std::size_t kLargestBody = 8U * 1024 * 1024;

  /// The file is opened with the first call; an empty path keeps nothing.
  explicit DownloadCache(std::string path);

  std::optional<Validators> validators(const std::string& url);
  /// The body that was kept with just these validators.
  std::optional<std::string> body(const std::string& url, const Validators& validators);
  void keep(const std::string& url, const Validators& validators, const std::string& body);

 private:
  void run(const char* sql, const SqliteFile::Bind& bind, const SqliteFile::Row& row);
  void removeOldest(std::size_t added);

  SqliteFile file_;
  std::size_t addedSinceRemoving_ = kLargestBody;  // so that the first one looks
};

}  // namespace zovk
