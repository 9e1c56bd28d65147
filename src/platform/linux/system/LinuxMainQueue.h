#pragma once

#include <chrono>
#include <deque>
#include <thread>

#include "platform/linux/system/PollSet.h"
#include "support/UniqueFd.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/MainQueue.h"

namespace zovk {

/// The main queue, run by the host's pump. The thread that makes it is the main thread. Only
/// `async`, `sync` and `isMainThread` may be called from other threads. The queue also watches
/// descriptors of other parts; their callbacks take turns with the tasks.
class LinuxMainQueue : public MainQueue {
 public:
  LinuxMainQueue();
  ~LinuxMainQueue() override;

  void async(Task task) override;
  void sync(const Task& task) override;
  bool isMainThread() const override;

  /// Calls back from the pump whenever `fd` is readable or closed by the other end.
  void addSource(int fd, PollSet::Callback callback);
  /// Call it before `fd` is closed.
  void removeSource(int fd);

  /// Runs tasks and callbacks that are due. After `budget` none is begun, except the first one, so
  /// that work goes on even with an empty budget. A pump within a pump does nothing.
  void pump(std::chrono::microseconds budget);
  /// Returns a descriptor that is readable exactly when a pump would find something to do.
  int pollDescriptor() const { return sources_.descriptor(); }
  /// Drops waiting tasks and wakes the callers that wait in `sync`. Later pumps do nothing.
  void shutDown();

 private:
  using Deadline = std::chrono::steady_clock::time_point;
  bool isShutDown() const;
  void runTasks();
  Task takeTask();
  void raiseSignal() ZOVK_REQUIRES(mutex_);
  void clearSignal() ZOVK_REQUIRES(mutex_);

  const std::thread::id mainThread_ = std::this_thread::get_id();
  mutable Mutex mutex_;
  std::deque<Task> tasks_ ZOVK_GUARDED_BY(mutex_);
  bool shutDown_ ZOVK_GUARDED_BY(mutex_) = false;
  UniqueFd signal_;  // readable exactly while there are tasks
  PollSet sources_;
  bool pumping_ = false;
  Deadline deadline_;
};

}  // namespace zovk
