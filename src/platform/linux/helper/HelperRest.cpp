#include "platform/linux/helper/HelperRest.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <unistd.h>

#include "platform/linux/system/TimerDescriptor.h"

namespace zovk {
HelperRest::HelperRest(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty)
    : queue_(queue),
      restAfter_(launcher.restAfter),
      endAfter_(launcher.endAfter),
      duty_(std::move(duty)),
      timer_(openTimer()) {
  queue_.addSource(timer_.get(), [this] { look(); });
}

void HelperRest::watch(bool idle) {
  resting_ = false;
  setTimer(timer_, idle ? std::max(restAfter_, std::chrono::milliseconds(1))
                        : std::chrono::milliseconds(0));
}

void HelperRest::look() {
  std::uint64_t turns = 0;
  if (::read(timer_.get(), &turns, sizeof turns) < 0) return;
  if (std::exchange(resting_, true)) return duty_.end();
  setTimer(timer_, endAfter_);
  duty_.rest();
}

void HelperRest::close() {
  queue_.removeSource(timer_.get());
  timer_.reset();
}

}  // namespace zovk
