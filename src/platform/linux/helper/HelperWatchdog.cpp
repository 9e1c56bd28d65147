#include "platform/linux/helper/HelperWatchdog.h"

#include <cstdint>
#include <utility>

#include <unistd.h>

#include "platform/linux/system/TimerDescriptor.h"

namespace zovk {
namespace {

// A game that draws a frame a second looks often enough.
constexpr std::chrono::seconds kLongestGap{1};

}  // namespace

HelperWatchdog::HelperWatchdog(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty)
    : queue_(queue),
      interval_(launcher.pingInterval),
      now_(launcher.now),
      duty_(std::move(duty)),
      timer_(openTimer()),
      silence_(launcher.answerTimeout, kLongestGap) {
  queue_.addSource(timer_.get(), [this] { look(); });
}

void HelperWatchdog::watch(bool on) {
  if (std::exchange(watching_, on) == on) return;
  if (on) silence_.begin(now_());
  const auto interval = on ? interval_ : std::chrono::milliseconds(0);
  setTimer(timer_, interval, interval);
}

void HelperWatchdog::look() {
  std::uint64_t turns = 0;
  if (::read(timer_.get(), &turns, sizeof turns) < 0 || !watching_) return;
  if (silence_.isTooLong(now_())) return duty_.silent();
  duty_.ping();
}

void HelperWatchdog::close() {
  watching_ = false;
  queue_.removeSource(timer_.get());
  timer_.reset();
}

}  // namespace zovk
