#include "platform/linux/system/AtomicWrite.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/system/WriteAll.h"
#include "support/UniqueFd.h"

namespace zovk {
namespace {

std::error_code lastError() {
  return {errno, std::generic_category()};
}

/// A new file of the user's own, removed at the end of its life unless it was moved into place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& directory)
      : path_(directory + "/.zovkpopup-write-XXXXXX"), file_(::mkostemp(path_.data(), O_CLOEXEC)) {
    if (!file_) error_ = lastError();
    if (file_) ::fchmod(file_.get(), 0600);  // whatever the process's mask left of it
  }
  ~TemporaryFile() {
    if (file_ && !moved_) ::unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  std::error_code error() const { return error_; }
  std::error_code write(std::string_view bytes) {
    if (const std::error_code error = writeAll(file_.get(), bytes)) return error;
    return ::fsync(file_.get()) == 0 ? std::error_code() : lastError();
  }
  std::error_code moveTo(const std::string& path) {
    if (std::rename(path_.c_str(), path.c_str()) != 0) return lastError();
    moved_ = true;
    return {};
  }

 private:
  std::string path_;
  UniqueFd file_;
  std::error_code error_;
  bool moved_ = false;
};

// The new name is safe only once the directory is on disk too. By now the file is replaced, so a
// system that cannot do this for directories must not make it look like a failure.
void flushDirectory(const std::string& directory) {
  const UniqueFd handle(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (handle) ::fsync(handle.get());
}

}  // namespace

std::error_code replaceFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  const std::string directory = parent.empty() ? "." : parent.string();
  TemporaryFile file(directory);
  if (file.error()) return file.error();
  if (const std::error_code error = file.write(bytes)) return error;
  if (const std::error_code error = file.moveTo(path)) return error;
  flushDirectory(directory);
  return {};
}

}  // namespace zovk
