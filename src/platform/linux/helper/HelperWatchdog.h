#pragma once

#include <functional>

#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/helper/HelperSilence.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "support/UniqueFd.h"

namespace zovk {

/// Pings the helper while it is watched, and tells when nothing came back for too long. Main thread
/// only; both callbacks come from the pump. At rest it wakes nobody. Making one throws
/// std::system_error when the process has no descriptors left; the queue must outlive `close`.
class HelperWatchdog {
 public:
  struct Duty {
    std::function<void()> ping;
    std::function<void()> silent;
  };
  HelperWatchdog(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty);

  void watch(bool on);
  /// The helper sent something, whatever it was.
  void heard() { silence_.heard(); }
  /// For good, before the queue goes.
  void close();

 private:
  void arm(bool on) const;
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
