#include "service/console/WholeFile.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace zovk::service {
namespace {

[[noreturn]] void fail(const std::filesystem::path& path) {
  throw std::runtime_error(path.string() + ": cannot be written: " + std::strerror(errno));
}

class Descriptor {
 public:
  Descriptor(const std::filesystem::path& path, int flags)
      : path_(path), number_(::open(path.c_str(), flags | O_CLOEXEC, 0644)) {
    if (number_ < 0) fail(path_);
  }
  ~Descriptor() { ::close(number_); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  void write(std::string_view bytes) const {
    while (!bytes.empty()) {
      const ssize_t written = ::write(number_, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) fail(path_);
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void sync() const {
    if (::fsync(number_) != 0) fail(path_);
  }

 private:
  const std::filesystem::path path_;
  const int number_;
};

}  // namespace

void writeWhole(const std::filesystem::path& path, std::string_view bytes) {
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  const std::filesystem::path unfinished = path.string() + ".unfinished";
  {
    const Descriptor file(unfinished, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW);
    file.write(bytes);
    file.sync();
  }
  if (::rename(unfinished.c_str(), path.c_str()) != 0) fail(path);
  const std::filesystem::path folder = path.parent_path().empty() ? "." : path.parent_path();
  Descriptor(folder, O_RDONLY | O_DIRECTORY).sync();
}

}  // namespace zovk::service
