#include "platform/linux/system/PosixFileSystem.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/system/AtomicWrite.h"
#include "platform/linux/system/PrivateFile.h"
#include "platform/linux/system/WriteAll.h"
#include "support/UniqueFd.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPieceSize = 64U * 1024;

std::error_code lastError() {
  return {errno, std::generic_category()};
}

// System calls would take a path with a zero byte for the part in front of it.
bool canExist(const std::string& path) {
  return !path.empty() && path.find('\0') == std::string::npos;
}

std::error_code nothingThere() {
  return std::make_error_code(std::errc::no_such_file_or_directory);
}

std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  if (!canExist(path) || ::stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

std::int64_t nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

// Opens a regular file and nothing else; `error` has the reason for a failure.
UniqueFd openFile(const std::string& path, int flags, std::error_code& error) {
  if (!canExist(path)) {
    error = nothingThere();
    return {};
  }
  UniqueFd file(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) {
    error = lastError();
    return {};
  }
  if (!S_ISREG(status.st_mode)) {
    error = std::make_error_code(std::errc::invalid_argument);
    return {};
  }
  return file;
}

// Hands all bytes to `sink`; false when they could not be read to the end.
template <class Sink>
bool readToEnd(int file, const Sink& sink) {
  std::array<char, kPieceSize> buffer;
  while (true) {
    const ssize_t count = ::read(file, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    sink(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
  }
}

// Adds the entries below `directory`, each with `prefix` in front. A directory below that cannot
// be listed counts as empty.
bool listInto(const fs::path& directory, const std::string& prefix,
              std::vector<std::string>& entries) {
  std::error_code error;
  fs::directory_iterator entry(directory, error);
  if (error) return false;
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string name = prefix + entry->path().filename().string();
    entries.push_back(name);
    // Both are known from listing; asking for the status would be a look at every file.
    std::error_code ignored;
    if (!entry->is_symlink(ignored) && entry->is_directory(ignored)) {
      listInto(entry->path(), name + "/", entries);
    }
  }
  return true;
}

}  // namespace

bool PosixFileSystem::exists(const std::string& path) const {
  return statusOf(path).has_value();
}

std::optional<FileIdentity> PosixFileSystem::identity(const std::string& path) const {
  const auto status = statusOf(path);
  if (!status) return std::nullopt;
  return FileIdentity{status->st_dev, status->st_ino, static_cast<std::uint64_t>(status->st_size),
                      nanoseconds(status->st_mtim), nanoseconds(status->st_ctim)};
}

std::error_code PosixFileSystem::createDirectory(const std::string& path) {
  if (!canExist(path)) return nothingThere();
  if (::mkdir(path.c_str(), 0700) != 0) return lastError();
  makePrivateDirectory(path);  // the process's mask may have taken more
  return {};
}

std::error_code PosixFileSystem::remove(const std::string& path) {
  if (!canExist(path)) return nothingThere();
  if (::unlink(path.c_str()) == 0) return {};
  std::error_code error;
  const auto removed = fs::remove_all(path, error);
  return !error && removed == 0 ? nothingThere() : error;
}

std::optional<std::vector<std::string>> PosixFileSystem::listRecursively(
    const std::string& directory) const {
  std::vector<std::string> entries;
  std::error_code ignored;
  // Files behind a link are not listed below, and not here: a caller may delete the listed files.
  if (fs::is_symlink(directory, ignored)) return std::nullopt;
  if (!canExist(directory) || !listInto(directory, "", entries)) return std::nullopt;
  std::sort(entries.begin(), entries.end());  // keeps a directory before its entries
  return entries;
}

std::optional<std::string> PosixFileSystem::read(const std::string& path) const {
  std::error_code error;
  const UniqueFd file = openFile(path, O_RDONLY, error);
  if (!file) return std::nullopt;
  std::string bytes;
  if (!readToEnd(file.get(), [&](std::string_view piece) { bytes += piece; })) return std::nullopt;
  return bytes;
}

bool PosixFileSystem::readPieces(const std::string& path,
                                 const std::function<void(std::string_view piece)>& sink) const {
  std::error_code error;
  const UniqueFd file = openFile(path, O_RDONLY, error);
  if (!file) return false;
  readToEnd(file.get(), sink);
  return true;
}

std::error_code PosixFileSystem::writeAtomically(const std::string& path, std::string_view bytes) {
  return canExist(path) ? replaceFile(path, bytes) : nothingThere();
}

std::error_code PosixFileSystem::append(const std::string& path, std::string_view bytes) {
  std::error_code error;
  const UniqueFd file = openFile(path, O_WRONLY | O_APPEND, error);
  return file ? writeAll(file.get(), bytes) : error;
}

}  // namespace zovk
