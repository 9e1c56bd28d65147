#include "platform/linux/system/LinuxTimers.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <sys/timerfd.h>

#include "platform/linux/system/TimerDescriptor.h"

namespace zovk {
namespace {

using SteadyClock = std::chrono::steady_clock;
using TimePoint = SteadyClock::time_point;

timespec toTimespec(TimePoint time) {
  const auto nanoseconds =
      std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
  return {static_cast<time_t>(nanoseconds / 1'000'000'000), nanoseconds % 1'000'000'000};
}

}  // namespace

/// The running timers and the descriptor that becomes readable when the next one is due.
class LinuxTimers::Schedule {
 public:
  int descriptor() const { return clock_.get(); }
  void add(RepeatingTimer* timer) { timers_.push_back(timer), arm(); }
  void remove(RepeatingTimer* timer) { std::erase(timers_, timer), arm(); }
  void fireOneDue();

 private:
  RepeatingTimer* earliest() const;
  void arm();

  UniqueFd clock_ = openTimer();
  std::vector<RepeatingTimer*> timers_;  // each takes itself out when it stops
};

class LinuxTimers::RepeatingTimer final : public Timer,
                                          public std::enable_shared_from_this<RepeatingTimer> {
 public:
  RepeatingTimer(const std::shared_ptr<Schedule>& schedule, std::chrono::milliseconds interval,
                 std::function<void()> callback)
      : schedule_(schedule),
        interval_(std::max(interval, std::chrono::milliseconds(1))),
        due_(SteadyClock::now() + interval_),
        callback_(std::make_shared<const std::function<void()>>(std::move(callback))) {
    schedule->add(this);
  }
  ~RepeatingTimer() override { invalidate(); }
  RepeatingTimer(const RepeatingTimer&) = delete;
  RepeatingTimer& operator=(const RepeatingTimer&) = delete;

  void fire() override {
    const auto callback = callback_;  // stays while it runs, also when it stops its own timer
    if (callback != nullptr && *callback) (*callback)();
  }

  void invalidate() override {
    const auto callback = std::exchange(callback_, nullptr);
    if (callback == nullptr) return;
    if (const auto schedule = schedule_.lock()) schedule->remove(this);
  }

  bool isValid() const override { return callback_ != nullptr; }

  TimePoint due() const { return due_; }
  /// Moves on to the first turn after `now`; those in between are missed.
  void skipPast(TimePoint now) { due_ += ((now - due_) / interval_ + 1) * interval_; }

 private:
  const std::weak_ptr<Schedule> schedule_;
  const SteadyClock::duration interval_;
  TimePoint due_;
  std::shared_ptr<const std::function<void()>> callback_;
};

void LinuxTimers::Schedule::fireOneDue() {
  RepeatingTimer* const next = earliest();
  const TimePoint now = SteadyClock::now();
  if (next == nullptr || next->due() > now) return;
  const auto held = next->shared_from_this();
  held->skipPast(now);
  arm();
  held->fire();
}

LinuxTimers::RepeatingTimer* LinuxTimers::Schedule::earliest() const {
  const auto found = std::min_element(
      timers_.begin(), timers_.end(),
      [](const RepeatingTimer* a, const RepeatingTimer* b) { return a->due() < b->due(); });
  return found == timers_.end() ? nullptr : *found;
}

void LinuxTimers::Schedule::arm() {
  itimerspec setting{};
  if (const RepeatingTimer* const next = earliest()) setting.it_value = toTimespec(next->due());
  // Setting the time again also makes the descriptor unreadable until then.
  ::timerfd_settime(clock_.get(), TFD_TIMER_ABSTIME, &setting, nullptr);
}

LinuxTimers::LinuxTimers(LinuxMainQueue& queue)
    : queue_(queue), schedule_(std::make_shared<Schedule>()) {
  queue_.addSource(schedule_->descriptor(), [schedule = schedule_] { schedule->fireOneDue(); });
}

LinuxTimers::~LinuxTimers() {
  queue_.removeSource(schedule_->descriptor());
}

std::shared_ptr<Timer> LinuxTimers::scheduleRepeating(std::chrono::milliseconds interval,
                                                      std::function<void()> callback) {
  return std::make_shared<RepeatingTimer>(schedule_, interval, std::move(callback));
}

}  // namespace zovk
