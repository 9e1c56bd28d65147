#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <sys/types.h>

#include "support/UniqueFd.h"

namespace zovk {

/// A child process, identified by a descriptor, because the system may reuse its number. One
/// thread at a time. It neither kills nor waits on its own: its owner kills and reaps.
class HelperProcess {
 public:
  /// Returns nothing if the system cannot watch the process; the process is then killed and reaped.
  static std::optional<HelperProcess> watch(pid_t pid);

  pid_t pid() const { return pid_; }
  /// Returns a descriptor that is readable once the process has ended.
  int descriptor() const { return descriptor_.get(); }
  void kill();
  /// Reaps the process and returns how it ended; nothing while it runs. Does not wait.
  std::optional<std::string> reap();
  /// Waits for its end until `deadline`. Then returns the same as `reap`.
  std::optional<std::string> reapUntil(std::chrono::steady_clock::time_point deadline);

 private:
  HelperProcess(pid_t pid, UniqueFd descriptor) : pid_(pid), descriptor_(std::move(descriptor)) {}

  pid_t pid_;
  UniqueFd descriptor_;
};

}  // namespace zovk
