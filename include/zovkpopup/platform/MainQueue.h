#pragma once

#include <functional>

namespace zovk {

/// Runs tasks on the host's main thread, in the order in which they were added. `async` may be
/// called from any thread and never blocks. `sync` may be called from any thread and blocks until
/// the task has run. On the main thread it runs the task at once, so it cannot deadlock there. The
/// queue owns waiting tasks. A shutdown drops them without running them. No call fails: a task that
/// is added after a shutdown is dropped too, and `sync` returns without running it.
class MainQueue {
 public:
  using Task = std::function<void()>;
  virtual ~MainQueue() = default;

  virtual void async(Task task) = 0;
  virtual void sync(const Task& task) = 0;
  virtual bool isMainThread() const = 0;
};

}  // namespace zovk
