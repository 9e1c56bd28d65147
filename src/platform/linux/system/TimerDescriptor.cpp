#include "platform/linux/system/TimerDescriptor.h"

#include <cerrno>
#include <system_error>

#include <sys/timerfd.h>

namespace zovk {
namespace {

timespec timespecOf(std::chrono::milliseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {seconds.count(), std::chrono::nanoseconds(time - seconds).count()};
}

}  // namespace

UniqueFd openTimer() {
  UniqueFd timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
  if (!timer) throw std::system_error(errno, std::generic_category(), "timerfd_create");
  return timer;
}

void setTimer(const UniqueFd& timer, std::chrono::milliseconds first,
              std::chrono::milliseconds interval) {
  const itimerspec when{.it_interval = timespecOf(interval), .it_value = timespecOf(first)};
  ::timerfd_settime(timer.get(), 0, &when, nullptr);
}

}  // namespace zovk
