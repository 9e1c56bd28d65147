#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// A tree of files in memory that can be made to fail. Any thread. Entries are listed sorted by
/// path. Every change of a file gives it new times; a rewritten file also gets a new inode.
class MemoryFileSystem final : public FileSystem {
 public:
  MemoryFileSystem();

  bool exists(const std::string& path) const override;
  std::optional<FileIdentity> identity(const std::string& path) const override;
  std::error_code createDirectory(const std::string& path) override;
  std::error_code remove(const std::string& path) override;
  std::optional<std::vector<std::string>> listRecursively(
      const std::string& directory) const override;
  std::optional<std::string> read(const std::string& path) const override;
  bool readPieces(const std::string& path,
                  const std::function<void(std::string_view piece)>& sink) const override;
  std::error_code writeAtomically(const std::string& path, std::string_view bytes) override;
  std::error_code append(const std::string& path, std::string_view bytes) override;

  // For tests to prepare and examine files. These ignore all faults and count nothing.

  /// Adds a file, with its parent directories.
  void addFile(const std::string& path, std::string_view text);
  /// Adds a directory, with its parent directories.
  void addDirectory(const std::string& path);
  void addLink(const std::string& path, const std::string& target);
  /// Removes a file, or a directory with its contents.
  void take(const std::string& path);
  /// Returns the text of a file, or nothing if there is none.
  std::optional<std::string> text(const std::string& path) const;
  bool isDirectory(const std::string& path) const;
  /// Returns everything below a directory, sorted.
  std::vector<std::string> list(const std::string& directory) const;
  /// Return how often a path was written or appended to with success, and how often it was read.
  int writeCount(const std::string& path) const;
  int readCount(const std::string& path) const;

  // Faults. A prefix is the beginning of a path. Each fault stays until `clearFaults`.

  void failWrites(const std::string& prefix, std::errc error = std::errc::io_error);
  void failReads(const std::string& prefix);
  /// Makes a file that is read in pieces end after that many bytes.
  void cutReads(const std::string& path, std::size_t bytes);
  void failRemovals(const std::string& prefix, std::errc error = std::errc::io_error);
  void failCreateDirectory(const std::string& prefix, std::errc error = std::errc::io_error);
  /// Makes a directory read-only: no entry can be made, replaced or removed, but its files can be
  /// appended to.
  void makeReadOnly(const std::string& directory);
  /// Sets how many bytes may still be written. A replaced file needs room beside the old one.
  void setFreeSpace(std::uint64_t bytes);
  /// Removes the file after that many looks: by exists, identity, read or readPieces.
  void vanishAfter(const std::string& path, int looks);
  void clearFaults();

 private:
  enum class Kind { kFile, kDirectory, kLink };
  struct Entry {
    Kind kind = Kind::kFile;
    std::string content;  // of a link, its target
    std::uint64_t inode = 0;
    std::int64_t time = 0;
  };
  using Entries = std::map<std::string, Entry>;  // by path without links; the root's is empty
  struct Place {
    std::string key;
    Entry* entry = nullptr;  // null if there is none
    std::errc error{};       // why none can exist
  };
  struct Faults {
    std::map<std::string, std::errc> writes, removals, directories;  // by prefix
    std::set<std::string> reads;                                     // prefixes
    std::map<std::string, std::size_t> cuts;
    std::map<std::string, int> looksLeft;
    std::set<std::string> readOnly;
    std::optional<std::uint64_t> freeSpace;
  };

  static std::string pathAbove(const std::string& path);
  enum class LastLink { kFollow, kKeep };
  Place find(const std::string& path, LastLink lastLink = LastLink::kFollow, int depth = 0) const
      ZOVK_REQUIRES(mutex_);
  void step(Place& place, std::string_view name, LastLink lastLink, int depth) const
      ZOVK_REQUIRES(mutex_);
  std::optional<Entry> look(const std::string& path) const ZOVK_REQUIRES(mutex_);
  std::optional<std::string> openedFile(const std::string& path) const;
  std::error_code whyNotChange(const Place& place,
                               const std::map<std::string, std::errc>& faults) const
      ZOVK_REQUIRES(mutex_);
  void put(const std::string& key, Kind kind, std::string_view content) ZOVK_REQUIRES(mutex_);
  void erase(const std::string& key) const ZOVK_REQUIRES(mutex_);
  void touch(Entry& entry) const ZOVK_REQUIRES(mutex_) { entry.time = ++time_; }
  std::string addAbove(const std::string& path) ZOVK_REQUIRES(mutex_);
  std::pair<Entries::iterator, Entries::iterator> below(const std::string& key) const
      ZOVK_REQUIRES(mutex_);

  // A look may remove a file, so const functions change a part of this.
  mutable Mutex mutex_;
  mutable Entries entries_ ZOVK_GUARDED_BY(mutex_);
  mutable Faults faults_ ZOVK_GUARDED_BY(mutex_);
  mutable std::map<std::string, int> reads_ ZOVK_GUARDED_BY(mutex_);
  mutable std::int64_t time_ ZOVK_GUARDED_BY(mutex_) = 1'700'000'000'000'000'000;
  std::map<std::string, int> writes_ ZOVK_GUARDED_BY(mutex_);
  std::uint64_t lastInode_ ZOVK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zovk
