#include "platform/linux/TemporaryDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/PrivateFile.h"

namespace zovk {
namespace {

std::string systemDirectory() {
  const char* const value = std::getenv("TMPDIR");
  return value != nullptr && *value == '/' ? value : "/tmp";
}

}  // namespace

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

UniqueFd TemporaryDirectory::makeFile(std::string& path) {
  if (path_.empty()) {
    std::string name = systemDirectory() + "/zovkpopup-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) return {};
    path_ = name;
    makePrivateDirectory(path_);  // whatever the process's mask left of it
  }
  path = path_ + "/download-XXXXXX";
  UniqueFd file(::mkostemp(path.data(), O_CLOEXEC));
  if (file) ::fchmod(file.get(), 0600);
  return file;
}

}  // namespace zovk
