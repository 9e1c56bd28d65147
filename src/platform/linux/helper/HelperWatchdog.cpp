#include "platform/linux/helper/HelperWatchdog.h"

#include <cstdint>
#include <utility>

#include <sys/timerfd.h>

namespace zovk {
namespace {

// A game that draws a frame a second looks often enough.
constexpr std::chrono::seconds kLongestGap{1};

timespec timespecOf(std::chrono::milliseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {seconds.count(), std::chrono::nanoseconds(time - seconds).count()};
}

}  // namespace

HelperWatchdog::HelperWatchdog(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty)
    : queue_(queue),
      interval_(launcher.pingInterval),
      now_(launcher.now),
      duty_(std::move(duty)),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)),
      silence_(launcher.answerTimeout, kLongestGap) {
  queue_.addSource(timer_.get(), [this] { look(); });
}

void HelperWatchdog::watch(bool on) {
  if (std::exchange(watching_, on) == on) return;
  if (on) silence_.begin(now_());
  arm(on);
}

void HelperWatchdog::arm(bool on) const {
  itimerspec when{};
  if (on) when.it_value = when.it_interval = timespecOf(interval_);
  ::timerfd_settime(timer_.get(), 0, &when, nullptr);
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
