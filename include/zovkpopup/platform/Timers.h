#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace zovk {

/// A repeating timer. Main thread only; it calls back on the main thread. The holder owns it, and
/// it owns its callback: dropping it stops it like `invalidate`. It cannot fail.
class Timer {
 public:
  virtual ~Timer() = default;
  /// Calls back now, without moving the next turn.
  virtual void fire() = 0;
  /// Stops it for good and drops the callback; a callback that is running finishes. Repeatable.
  virtual void invalidate() = 0;
  virtual bool isValid() const = 0;
};

/// Makes timers that run on the host's main thread. Main thread only, and it calls back there,
/// from the host's pump. The caller owns each timer. Turns that were missed, because the host did
/// not pump for a while, are not made up for: one callback stands for all of them.
class Timers {
 public:
  virtual ~Timers() = default;
  virtual std::shared_ptr<Timer> scheduleRepeating(std::chrono::milliseconds interval,
                                                   std::function<void()> callback) = 0;
};

}  // namespace zovk
