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

void HelperRest::watch(Helper helper) {
  helper_ = helper;
  if (helper == Helper::kBusy) return setTimer(timer_, std::chrono::milliseconds(0));
  const auto time = helper == Helper::kIdle ? restAfter_ : endAfter_;
  setTimer(timer_, std::max(time, std::chrono::milliseconds(1)));
}

void HelperRest::look() {
  std::uint64_t turns = 0;
  if (::read(timer_.get(), &turns, sizeof turns) < 0) return;
  if (helper_ == Helper::kIdle) return duty_.rest();
  if (helper_ == Helper::kResting) duty_.end();
}

void HelperRest::close() {
  queue_.removeSource(timer_.get());
  timer_.reset();
}

}  // namespace zovk
