#include "platform/linux/system/SystemClock.h"

#include <ctime>

namespace zovk {
namespace {

double secondsOf(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace

double SystemClock::secondsSince1970() const {
  return secondsOf(CLOCK_REALTIME);
}

double SystemClock::systemUptime() const {
  return secondsOf(CLOCK_BOOTTIME);
}

}  // namespace zovk
