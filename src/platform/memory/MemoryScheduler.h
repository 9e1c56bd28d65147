#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Clock.h"
#include "zovkpopup/platform/MainQueue.h"
#include "zovkpopup/platform/Timers.h"

namespace zovk {

class MemoryTimer;

/// Main queue, timers and clock in one, in virtual time, so that time and tasks cannot disagree.
/// Time stands still until a test moves it. The thread that makes it is the main thread. Any thread
/// may use `async`, `sync`, the clock and `pendingTaskCount`; everything else is for the main
/// thread. A `sync` from another thread returns once the main thread runs tasks.
class MemoryScheduler final : public MainQueue, public Timers, public Clock {
 public:
  static constexpr double kStartOfTime = 1'700'000'000;  ///< In seconds since 1970.
  static constexpr double kStartOfUptime = 1000;         ///< In seconds of uptime.

  MemoryScheduler();
  ~MemoryScheduler() override;
  MemoryScheduler(const MemoryScheduler&) = delete;
  MemoryScheduler& operator=(const MemoryScheduler&) = delete;

  void async(Task task) override;
  void sync(const Task& task) override;
  bool isMainThread() const override;
  std::shared_ptr<Timer> scheduleRepeating(std::chrono::milliseconds interval,
                                           std::function<void()> callback) override;
  double secondsSince1970() const override;
  double systemUptime() const override;

  /// Runs waiting tasks, the tasks that they add, and due timers, until none is left. Throws if the
  /// work does not end. Has no effect within a task.
  void runReady();
  /// Does the same, but begins nothing more after `budget` of real time. It always does one thing,
  /// so that work goes on even without a budget.
  void runReady(std::chrono::microseconds budget);
  /// Moves time on, and runs every task and every turn of a timer at its own time.
  void advance(std::chrono::nanoseconds duration);
  /// Moves time on without running anything, as if the host did not pump for a while.
  void skip(std::chrono::nanoseconds duration);
  /// Runs what is ready until `done` returns true, to which other threads may contribute, for at
  /// most `bound` of real time. Then throws, with `what` as the name of the thing it waited for.
  /// Virtual time stands still.
  void runUntil(const std::function<bool()>& done, const std::string& what,
                std::chrono::milliseconds bound = std::chrono::seconds(10));

  /// Sets the device's clock. Uptime and timers go on as before.
  void setTime(double secondsSince1970);
  std::size_t pendingTaskCount() const;
  std::size_t activeTimerCount();
  /// Drops waiting tasks, now and later, and stops timers.
  void shutDown();

 private:
  struct SyncCall;
  struct Entry {
    Task task;
    std::shared_ptr<SyncCall> call;  // null for async
  };

  void add(Entry entry);
  bool isShutDown() const;
  bool runOneTask();
  bool runOneTimer();
  bool runOne() { return runOneTask() || runOneTimer(); }
  void runAll();
  std::shared_ptr<MemoryTimer> nextTimer();
  std::chrono::nanoseconds elapsed() const;
  void setElapsed(std::chrono::nanoseconds elapsed);

  const std::thread::id mainThread_;
  mutable Mutex mutex_;
  std::condition_variable_any added_;
  std::deque<Entry> tasks_ ZOVK_GUARDED_BY(mutex_);
  bool shutDown_ ZOVK_GUARDED_BY(mutex_) = false;
  std::chrono::nanoseconds elapsed_ ZOVK_GUARDED_BY(mutex_){0};
  double wallOffset_ ZOVK_GUARDED_BY(mutex_) = kStartOfTime;
  bool running_ = false;
  std::vector<std::weak_ptr<MemoryTimer>> timers_;  // in the order in which they were made
};

}  // namespace zovk
