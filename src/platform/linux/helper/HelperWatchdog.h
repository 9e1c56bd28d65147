#pragma once

#include <functional>

#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/helper/HelperSilence.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "support/UniqueFd.h"

namespace zovk {

/// Pings the helper while it is watched, and reports when it has sent nothing for too long. Main
/// thread only; both callbacks come from the pump. While nothing is watched it never wakes the
/// process. The constructor throws std::system_error if the process has no descriptors left. The
/// queue must outlive `close`.
class HelperWatchdog {
 public:
  struct Duty {
    std::function<void()> ping;
    std::function<void()> silent;
  };
  HelperWatchdog(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty);

  void watch(bool on);
  /// Reports that the helper sent something.
  void heard() { silence_.heard(); }
  /// Stops for good. Call it before the queue is destroyed.
  void close();

 private:
  void look();

  LinuxMainQueue& queue_;
  const std::chrono::milliseconds interval_;
  const std::function<HelperSilence::TimePoint()> now_;
  const Duty duty_;
  UniqueFd timer_;
  HelperSilence silence_;
  bool watching_ = false;
};

}  // namespace zovk
