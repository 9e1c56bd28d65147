#include "platform/linux/system/PrivateFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

#include "support/UniqueFd.h"

namespace zovk {
namespace {

constexpr mode_t kAllBits = 07777;
constexpr mode_t kPrivateDirectory = 0700;
constexpr mode_t kPrivateFile = 0600;

// A descriptor would be no help: closing one lets go of the locks that this process has on a file.
void setMode(const std::string& path, const struct stat& status, mode_t mode) {
  if ((status.st_mode & kAllBits) != mode) ::chmod(path.c_str(), mode);
}

}  // namespace

void makePrivateDirectory(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return;
  setMode(path, status, kPrivateDirectory);
}

bool makePrivateFile(const std::string& path) {
  constexpr int kOnlyNew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  const UniqueFd made(::open(path.c_str(), kOnlyNew, kPrivateFile));
  if (!made && errno != EEXIST) return false;
  return keepPrivateFile(path);
}

bool keepPrivateFile(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return errno == ENOENT;
  if (!S_ISREG(status.st_mode)) return false;
  setMode(path, status, kPrivateFile);
  return true;
}

}  // namespace zovk
