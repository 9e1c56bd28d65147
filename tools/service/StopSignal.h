#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace zovk::service {

/// Lets answers that are slow on purpose end early when the service stops. Any thread.
class StopSignal {
 public:
  void raise() {
    {
      const std::lock_guard lock(mutex_);
      raised_ = true;
    }
    changed_.notify_all();
  }

  /// Waits for that time, or until the service stops. Returns whether it stops.
  bool waitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, time, [this] { return raised_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool raised_ = false;
};

}  // namespace zovk::service
