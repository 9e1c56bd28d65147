#include "platform/linux/helper/HelperRest.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>

#include <sys/timerfd.h>

namespace zovk {
namespace {

UniqueFd newTimer() {
  const int timer = ::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
  if (timer < 0) throw std::system_error(errno, std::generic_category(), "timerfd_create");
  return UniqueFd(timer);
}

}  // namespace

HelperRest::HelperRest(LinuxMainQueue& queue, const HelperLauncher& launcher, Duty duty)
    : queue_(queue),
      restAfter_(launcher.restAfter),
      endAfter_(launcher.endAfter),
      duty_(std::move(duty)),
      timer_(newTimer()) {
  queue_.addSource(timer_.get(), [this] { look(); });
}

void HelperRest::watch(bool idle) {
  resting_ = false;
  arm(idle ? std::max(restAfter_, std::chrono::milliseconds(1)) : std::chrono::milliseconds(0));
}

void HelperRest::arm(std::chrono::milliseconds time) const {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  itimerspec when{};
  when.it_value = {seconds.count(), std::chrono::nanoseconds(time - seconds).count()};
  ::timerfd_settime(timer_.get(), 0, &when, nullptr);
}

void HelperRest::look() {
  std::uint64_t turns = 0;
  if (::read(timer_.get(), &turns, sizeof turns) < 0) return;
  if (std::exchange(resting_, true)) return duty_.end();
  arm(endAfter_);
  duty_.rest();
}

void HelperRest::close() {
  queue_.removeSource(timer_.get());
  timer_.reset();
}

}  // namespace zovk
