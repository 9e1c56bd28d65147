#include "helper/ParentWatch.h"

#include <array>
#include <cstdint>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <glib-unix.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zovk::helper {
namespace {

/// So long has the main loop to end the process in order.
constexpr int kGraceMilliseconds = 500;

/// Knows nothing of this process's objects: it runs until the process is gone.
void watch(int socket, int game, int ended) {
  // A descriptor that could not be opened is left out by `poll`.
  std::array<pollfd, 2> ends{pollfd{socket, POLLRDHUP, 0}, pollfd{game, POLLIN, 0}};
  while (poll(ends.data(), ends.size(), -1) <= 0) {
  }
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(ended, &one, sizeof one);
  poll(nullptr, 0, kGraceMilliseconds);
  _exit(0);
}

}  // namespace

ParentWatch::ParentWatch(int socket, std::function<void()> gone)
    : gone_(std::move(gone)), ended_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (ended_ < 0) return;  // the main loop notices the end of the socket itself
  source_ = SourceGuard(g_unix_fd_add(ended_, G_IO_IN, onEnd, this));
  // The process, and not the thread of it that started this one, which may end before.
  const int game = static_cast<int>(syscall(SYS_pidfd_open, getppid(), 0U));
  const int copy = fcntl(socket, F_DUPFD_CLOEXEC, 0);
  std::thread(watch, copy, game, ended_).detach();
}

ParentWatch::~ParentWatch() = default;

gboolean ParentWatch::onEnd(int, GIOCondition, gpointer self) {
  auto* watch = static_cast<ParentWatch*>(self);
  watch->source_.forget();
  watch->gone_();
  return G_SOURCE_REMOVE;
}

}  // namespace zovk::helper
