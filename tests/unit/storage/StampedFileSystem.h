#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// Files whose identities a test chooses, so that content and identity can disagree, as they do
/// with coarse file times. Any thread, except for the two functions.
class StampedFileSystem final : public FileSystem {
 public:
  /// Called between opening a file and reading it.
  std::function<void()> duringRead;
  /// Called once it has been read.
  std::function<void()> afterRead;

  void put(const std::string& path, FileIdentity identity, std::string content) {
    const LockGuard lock(mutex_);
    files_[path] = {identity, std::move(content), std::nullopt};
  }
  void take(const std::string& path) {
    const LockGuard lock(mutex_);
    files_.erase(path);
  }
  /// An error ends the next read of the file after that many bytes.
  void breakNextRead(const std::string& path, std::size_t bytes) {
    const LockGuard lock(mutex_);
    files_[path].goodBytes = bytes;
  }
  int readCount() const {
    const LockGuard lock(mutex_);
    return reads_;
  }

  bool exists(const std::string& path) const override { return identity(path).has_value(); }
  std::optional<FileIdentity> identity(const std::string& path) const override {
    const LockGuard lock(mutex_);
    const auto found = files_.find(path);
    return found == files_.end() ? std::nullopt : std::optional(found->second.identity);
  }
  std::optional<std::string> read(const std::string& path) const override {
    const auto opened = open(path);
    if (afterRead) afterRead();
    if (!opened || opened->goodBytes) return std::nullopt;
    return opened->content;
  }
  bool readPieces(const std::string& path,
                  const std::function<void(std::string_view piece)>& sink) const override {
    const auto opened = open(path);
    if (afterRead) afterRead();
    if (!opened) return false;
    sink(opened->content.substr(0, opened->goodBytes.value_or(std::string::npos)));
    return true;
  }

  std::error_code createDirectory(const std::string&) override { return readOnly(); }
  std::error_code remove(const std::string&) override { return readOnly(); }
  std::error_code writeAtomically(const std::string&, std::string_view) override {
    return readOnly();
  }
  std::error_code append(const std::string&, std::string_view) override { return readOnly(); }
  std::optional<std::vector<std::string>> listRecursively(const std::string&) const override {
    return std::nullopt;
  }

 private:
  struct File {
    FileIdentity identity;
    std::string content;
    std::optional<std::size_t> goodBytes;
  };

  static std::error_code readOnly() {
    return std::make_error_code(std::errc::read_only_file_system);
  }
  std::optional<File> open(const std::string& path) const {
    if (duringRead) duringRead();
    const LockGuard lock(mutex_);
    ++reads_;
    const auto found = files_.find(path);
    if (found == files_.end()) return std::nullopt;
    File opened = found->second;
    found->second.goodBytes.reset();
    return opened;
  }

  mutable Mutex mutex_;
  mutable std::map<std::string, File> files_ ZOVK_GUARDED_BY(mutex_);
  mutable int reads_ ZOVK_GUARDED_BY(mutex_) = 0;
};

/// A clock that shows the time that a test sets.
class StandingClock final : public Clock {
 public:
  explicit StandingClock(double now) : now_(now) {}
  void set(double now) { now_ = now; }
  double secondsSince1970() const override { return now_; }
  double systemUptime() const override { return now_; }

 private:
  double now_;
};

/// Returns the identity of a file that was written at `seconds`.
inline FileIdentity stampedAt(double seconds, std::uint64_t size) {
  const auto time = static_cast<std::int64_t>(seconds * 1e9);
  return {1, 100, size, time, time};
}

}  // namespace zovk
