#include "zovkpopup/FileWatch.h"

#include <array>
#include <cstring>

#include <sys/inotify.h>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {

FileWatch::FileWatch(const std::filesystem::path& file)
    : name_(file.filename()), notifier_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  const std::string folder = std::filesystem::absolute(file).parent_path().string();
  if (::inotify_add_watch(notifier_.get(), folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0) {
    throw ToolError(folder + ": cannot be watched", kUnavailable);
  }
}

bool FileWatch::changed() {
  bool found = false;
  alignas(inotify_event) std::array<char, 4096> bytes{};
  ssize_t count = 0;
  while ((count = ::read(notifier_.get(), bytes.data(), bytes.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      inotify_event event{};
      std::memcpy(&event, bytes.data() + at, sizeof event);
      if (event.len > 0) found = found || name_ == bytes.data() + at + sizeof event;
      at += sizeof event + event.len;
    }
  }
  return found;
}

}  // namespace zovk::tool
