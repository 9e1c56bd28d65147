#pragma once

#include <memory>

#include "platform/linux/system/LinuxMainQueue.h"
#include "zovkpopup/platform/Timers.h"

namespace zovk {

/// Timers on the monotonic clock, run by the queue's pump one callback at a time, the earliest due
/// first. The queue must outlive it. A timer whose LinuxTimers is gone never comes due.
class LinuxTimers : public Timers {
 public:
  explicit LinuxTimers(LinuxMainQueue& queue);
  ~LinuxTimers() override;
  LinuxTimers(const LinuxTimers&) = delete;
  LinuxTimers& operator=(const LinuxTimers&) = delete;

  std::shared_ptr<Timer> scheduleRepeating(std::chrono::milliseconds interval,
                                           std::function<void()> callback) override;

 private:
  class Schedule;
  class RepeatingTimer;

  LinuxMainQueue& queue_;
  std::shared_ptr<Schedule> schedule_;
};

}  // namespace zovk
