#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace zovk {

/// What tells one state of a file from another without reading it.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;
  std::int64_t changedNanoseconds = 0;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Whole files and directories, named by absolute paths in UTF-8.
/// Any thread; calls block until done and call back only within the call. Callers own what is
/// returned. Failures come back as an error code or an absent value; nothing throws, and a path
/// that cannot exist (empty, or holding a zero byte) is a path where nothing is.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Whether a file or directory is there; links are followed.
  virtual bool exists(const std::string& path) const = 0;
  /// Absent when nothing is there or it cannot be looked at; links are followed.
  virtual std::optional<FileIdentity> identity(const std::string& path) const = 0;
  /// Makes one directory; the one above must exist.
  virtual std::error_code createDirectory(const std::string& path) = 0;
  /// Removes a file, a link (not its target) or a directory with all it holds.
  virtual std::error_code remove(const std::string& path) = 0;
  /// Every entry below a directory, as paths relative to it, a directory before its entries;
  /// links are listed and not followed. Absent when the directory cannot be listed, or is a link.
  virtual std::optional<std::vector<std::string>> listRecursively(
      const std::string& directory) const = 0;
  /// The whole file; absent when it cannot be read or is no file.
  virtual std::optional<std::string> read(const std::string& path) const = 0;
  /// Hands the file's bytes to `sink` piece by piece. False when the file cannot be opened; an
  /// error after that ends the file early.
  virtual bool readPieces(const std::string& path,
                          const std::function<void(std::string_view piece)>& sink) const = 0;
  /// Replaces the file so that a reader, or a start after a crash, sees the old or the new bytes
  /// whole. On failure the old file is untouched.
  virtual std::error_code writeAtomically(const std::string& path, std::string_view bytes) = 0;
  /// Adds to the end of a file that exists. Not atomic.
  virtual std::error_code append(const std::string& path, std::string_view bytes) = 0;
};

}  // namespace zovk
