#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <sys/types.h>

#include "support/UniqueFd.h"

namespace zovk {

/// A child process, named by a descriptor so that its number can be given away again unnoticed.
/// Main thread only. It neither ends nor waits by itself: whoever holds it kills and reaps.
class HelperProcess {
 public:
  /// Absent when the system cannot watch the process; it is then ended and reaped.
  static std::optional<HelperProcess> watch(pid_t pid);

  pid_t pid() const { return pid_; }
  /// Readable once the process has ended.
  int descriptor() const { return descriptor_.get(); }
  void kill();
  /// How it ended, taking it off the system's table; absent while it runs. Does not wait.
  std::optional<std::string> reap();
  /// Waits for its end until `deadline`. True when it was reaped.
  bool reapUntil(std::chrono::steady_clock::time_point deadline);

 private:
  HelperProcess(pid_t pid, UniqueFd descriptor) : pid_(pid), descriptor_(std::move(descriptor)) {}

  pid_t pid_;
  UniqueFd descriptor_;
};

}  // namespace zovk
