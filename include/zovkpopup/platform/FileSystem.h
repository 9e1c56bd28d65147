#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace zovk {

/// Distinguishes one state of a file from another without reading it.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;
  std::int64_t changedNanoseconds = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Whole files and directories, named by absolute paths in UTF-8. Any thread; calls block until
/// done, and call back only within the call. Callers own the results. Failures are error codes or
/// absent values; nothing throws. A path that cannot exist (empty, or with a zero byte) counts as a
/// path without a file.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Returns whether a file or directory exists; follows links.
  virtual bool exists(const std::string& path) const = 0;
  /// Returns the identity of a file, or nothing if it does not exist or cannot be examined; follows
  /// links.
  virtual std::optional<FileIdentity> identity(const std::string& path) const = 0;
  /// Makes one directory. The parent must exist.
  virtual std::error_code createDirectory(const std::string& path) = 0;
  /// Removes a file, a link (not its target) or a directory with its contents.
  virtual std::error_code remove(const std::string& path) = 0;
  /// Returns every entry below a directory as a path relative to it, each directory before its
  /// entries. Lists links, but does not follow them. Returns nothing if the directory cannot be
  /// listed or is a link.
  virtual std::optional<std::vector<std::string>> listRecursively(
      const std::string& directory) const = 0;
  /// Returns the whole file, or nothing if it cannot be read or is not a file.
  virtual std::optional<std::string> read(const std::string& path) const = 0;
  /// Passes the file's bytes to `sink` in pieces. Returns false if the file cannot be opened. A
  /// later error ends the file early.
  virtual bool readPieces(const std::string& path,
                          const std::function<void(std::string_view piece)>& sink) const = 0;
  /// Replaces the file atomically: a reader, or a start after a crash, sees either all old or all
  /// new bytes. On failure the old file is unchanged.
  virtual std::error_code writeAtomically(const std::string& path, std::string_view bytes) = 0;
  /// Appends to an existing file. Not atomic.
  virtual std::error_code append(const std::string& path, std::string_view bytes) = 0;
};

}  // namespace zovk
