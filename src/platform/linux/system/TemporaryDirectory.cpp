#include "platform/linux/system/TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/linux/system/PrivateFile.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPrefix = "zovkpopup-downloads-";
constexpr const char* kFilePrefix = "download-";
constexpr int kAttempts = 5;

std::string systemDirectory() {
  const char* const value = std::getenv("TMPDIR");
  return value != nullptr && *value == '/' ? value : "/tmp";
}

UniqueFd openDirectory(const std::string& path) {
  return UniqueFd(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool lock(const UniqueFd& directory) {
  return ::flock(directory.get(), LOCK_EX | LOCK_NB) == 0;
}

bool isOwn(const UniqueFd& directory) {
  struct stat facts {};
  return ::fstat(directory.get(), &facts) == 0 && facts.st_uid == ::geteuid();
}

/// Returns whether the name still leads to the open directory.
bool isStillThere(const UniqueFd& directory, const std::string& path) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(directory.get(), &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

/// Removes only what was made here, whatever else the directory holds.
void removeWithFiles(const std::string& path) {
  std::error_code error;
  for (fs::directory_iterator entry(path, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->path().filename().string().starts_with(kFilePrefix)) {
      fs::remove(entry->path(), ignored);
    }
  }
  ::rmdir(path.c_str());
}

/// Directories like this one whose owner holds no lock any more, since it is gone.
void removeAbandoned() {
  std::error_code error;
  for (fs::directory_iterator entry(systemDirectory(), error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string path = entry->path().string();
    if (!entry->path().filename().string().starts_with(kPrefix)) continue;
    const UniqueFd directory = openDirectory(path);
    if (directory && isOwn(directory) && lock(directory)) removeWithFiles(path);
  }
}

}  // namespace

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove_all(path_, ignored);
}

// Between making and locking, another game may take it for abandoned.
bool TemporaryDirectory::make() {
  for (int i = 0; i < kAttempts; ++i) {
    std::string name = systemDirectory() + "/" + kPrefix + "XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) return false;
    makePrivateDirectory(name);  // whatever the process's mask left of it
    UniqueFd directory = openDirectory(name);
    const bool taken = !directory || (!lock(directory) && errno == EWOULDBLOCK);
    if (taken || !isStillThere(directory, name)) continue;
    path_ = name;
    lock_ = std::move(directory);
    return true;
  }
  return false;
}

UniqueFd TemporaryDirectory::makeFile(std::string& path) {
  if (path_.empty()) {
    removeAbandoned();
    if (!make()) return {};
  }
  path = path_ + "/" + kFilePrefix + "XXXXXX";
  UniqueFd file(::mkostemp(path.data(), O_CLOEXEC));
  if (file) ::fchmod(file.get(), 0600);
  return file;
}

}  // namespace zovk
