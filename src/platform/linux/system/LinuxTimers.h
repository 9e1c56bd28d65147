#pragma once

#include <memory>

#include "platform/linux/system/LinuxMainQueue.h"
#include "zovkpopup/platform/Timers.h"

namespace zovk {

/// Timers on the monotonic clock. The queue's pump runs them, one callback at a time, the earliest
/// first. The queue must outlive them. A timer whose LinuxTimers is gone never fires.
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
