#pragma once

#include <algorithm>
#include <chrono>

#include <poll.h>

namespace zovk {

/// Waits until the descriptor is readable, for at most `bound`. Returns false if it is not.
inline bool waitReadable(int fd, std::chrono::milliseconds bound) {
  pollfd entry{fd, POLLIN, 0};
  const auto milliseconds = std::max<std::chrono::milliseconds::rep>(bound.count(), 0);
  return ::poll(&entry, 1, static_cast<int>(milliseconds)) == 1;
}

inline bool isReadable(int fd) {
  return waitReadable(fd, std::chrono::milliseconds(0));
}

}  // namespace zovk
