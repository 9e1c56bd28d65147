#pragma once

#include <cerrno>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace zovk {

/// Writes all bytes, in as many calls as needed.
inline std::error_code writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return {errno, std::generic_category()};
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

}  // namespace zovk
