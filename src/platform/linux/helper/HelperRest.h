#pragma once

#include <functional>

#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "support/UniqueFd.h"

namespace zovk {

/// Tells when nothing was shown for so long that the helper should give up what it holds ready, and
/// later when it should end. It wakes the game for either, and for nothing else. Main thread only;
/// both callbacks come from the pump. Making one throws std::system_error when the process has no
/// descriptors left; the queue must outlive `close`.
class HelperRest {
 public:
  struct Duty {
    std::function<void()> rest;
    std::function<void()> end;
  };
  HelperRest(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty);

  /// Something is shown, or there is no helper: nothing is due. Otherwise the time begins anew.
  void watch(bool idle);
  /// For good, before the queue goes.
  void close();

 private:
  void arm(std::chrono::milliseconds time) const;
  void look();

  LinuxMainQueue& queue_;
  const std::chrono::milliseconds restAfter_;
  const std::chrono::milliseconds endAfter_;
  const Duty duty_;
  UniqueFd timer_;
  bool resting_ = false;
};

}  // namespace zovk
