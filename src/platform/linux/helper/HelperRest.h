#pragma once

#include <functional>

#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "support/UniqueFd.h"

namespace zovk {

/// Reports when nothing was shown for so long that the helper should rest, and later when it should
/// end. It wakes the game for these two and for nothing else. Main thread only; both callbacks come
/// from the pump. The constructor throws std::system_error if the process has no descriptors left.
/// The queue must outlive `close`.
class HelperRest {
 public:
  struct Duty {
    std::function<void()> rest;
    std::function<void()> end;
  };
  HelperRest(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty);

  /// Whether something is shown, or there is no helper; nothing is; or the helper rests already.
  enum class Helper { kBusy, kIdle, kResting };
  /// The time begins again.
  void watch(Helper helper);
  /// Stops for good. Call it before the queue is destroyed.
  void close();

 private:
  void look();

  LinuxMainQueue& queue_;
  const std::chrono::milliseconds restAfter_;
  const std::chrono::milliseconds endAfter_;
  const Duty duty_;
  UniqueFd timer_;
  Helper helper_ = Helper::kBusy;
};

}  // namespace zovk
