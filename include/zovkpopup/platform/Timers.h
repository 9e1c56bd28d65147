#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace zovk {

/// A repeating timer. Main thread only, and it calls back there. The holder owns the timer, and the
/// timer owns its callback. Dropping the timer stops it, like `invalidate`. It cannot fail.
class Timer {
 public:
  virtual ~Timer() = default;
  /// Calls back now. The next regular call stays on time.
  virtual void fire() = 0;
  /// Stops the timer for good and drops the callback. A callback that is running finishes. May be
  /// repeated.
  virtual void invalidate() = 0;
  virtual bool isValid() const = 0;
};

/// Makes timers that run on the host's main thread. Main thread only; they call back there, from
/// the host's pump. The caller owns each timer. If the host did not pump for a while, one callback
/// stands for all missed ones.
class Timers {
 public:
  virtual ~Timers() = default;
  virtual std::shared_ptr<Timer> scheduleRepeating(std::chrono::milliseconds interval,
                                                   std::function<void()> callback) = 0;
};

}  // namespace zovk
