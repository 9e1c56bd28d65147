#include "platform/linux/helper/HelperProcess.h"

#include <cerrno>
#include <csignal>

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zovk {

// The C library's own functions for this cannot be linked from C++ in every version.
std::optional<HelperProcess> HelperProcess::watch(pid_t pid) {
  UniqueFd descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0U)));
  if (descriptor) return HelperProcess(pid, std::move(descriptor));
  ::kill(pid, SIGKILL);
  while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
  }
  return std::nullopt;
}

void HelperProcess::kill() {
  ::syscall(SYS_pidfd_send_signal, descriptor_.get(), SIGKILL, nullptr, 0U);
}

std::optional<std::string> HelperProcess::reap() {
  siginfo_t info{};
  const auto id = static_cast<id_t>(descriptor_.get());
  // The host may ignore its children's ends, or reap whatever it finds.
  if (::waitid(P_PIDFD, id, &info, WEXITED | WNOHANG) != 0) return "ended";
  if (info.si_pid == 0) return std::nullopt;
  const std::string number = std::to_string(info.si_status);
  return info.si_code == CLD_EXITED ? "exited with status " + number
                                    : "was ended by signal " + number;
}

std::optional<std::string> HelperProcess::reapUntil(
    std::chrono::steady_clock::time_point deadline) {
  using std::chrono::milliseconds;
  for (;;) {
    auto end = reap();
    if (end) return end;
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left <= milliseconds::zero()) return std::nullopt;
    pollfd ended{descriptor_.get(), POLLIN, 0};
    ::poll(&ended, 1, static_cast<int>(left.count()));
  }
}

}  // namespace zovk
