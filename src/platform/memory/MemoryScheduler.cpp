#include "platform/memory/MemoryScheduler.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/memory/MemoryTimer.h"

namespace zovk {
namespace {

using RealClock = std::chrono::steady_clock;

constexpr int kEndlessWork = 1'000'000;

double seconds(std::chrono::nanoseconds duration) {
  return std::chrono::duration<double>(duration).count();
}

// True while the main thread runs something, so that nothing runs inside of something else.
class RunningScope {
 public:
  explicit RunningScope(bool& running) : running_(running) { running_ = true; }
  ~RunningScope() { running_ = false; }
  RunningScope(const RunningScope&) = delete;
  RunningScope& operator=(const RunningScope&) = delete;

 private:
  bool& running_;
};

}  // namespace

// Held by the waiting thread and by the queue; the waiter goes on when the queue lets it go, with
// the task run or not.
struct MemoryScheduler::SyncCall {
  Mutex mutex;
  std::condition_variable_any changed;
  bool done ZOVK_GUARDED_BY(mutex) = false;

  void finish() {
    const LockGuard lock(mutex);
    done = true;
    changed.notify_all();
  }
  void wait() {
    const LockGuard lock(mutex);
    while (!done) changed.wait(mutex);
  }
};

MemoryScheduler::MemoryScheduler() : mainThread_(std::this_thread::get_id()) {}

MemoryScheduler::~MemoryScheduler() {
  shutDown();
}

bool MemoryScheduler::isMainThread() const {
  return std::this_thread::get_id() == mainThread_;
}

void MemoryScheduler::async(Task task) {
  add({std::move(task), nullptr});
}

void MemoryScheduler::sync(const Task& task) {
  if (isMainThread()) {
    if (!isShutDown()) task();
    return;
  }
  const auto call = std::make_shared<SyncCall>();
  add({task, call});
  call->wait();
}

void MemoryScheduler::add(Entry entry) {
  {
    const LockGuard lock(mutex_);
    if (!shutDown_) {
      tasks_.push_back(std::move(entry));
      added_.notify_all();
      return;
    }
  }
  if (entry.call) entry.call->finish();
}

void MemoryScheduler::shutDown() {
  std::deque<Entry> dropped;
  {
    const LockGuard lock(mutex_);
    shutDown_ = true;
    dropped.swap(tasks_);
  }
  for (const Entry& entry : dropped) {
    if (entry.call) entry.call->finish();
  }
}

bool MemoryScheduler::isShutDown() const {
  const LockGuard lock(mutex_);
  return shutDown_;
}

std::size_t MemoryScheduler::pendingTaskCount() const {
  const LockGuard lock(mutex_);
  return tasks_.size();
}

bool MemoryScheduler::runOneTask() {
  Entry entry;
  {
    const LockGuard lock(mutex_);
    if (tasks_.empty()) return false;
    entry = std::move(tasks_.front());
    tasks_.pop_front();
  }
  if (entry.task) entry.task();
  entry.task = nullptr;  // what it held is gone before a waiter goes on
  if (entry.call) entry.call->finish();
  return true;
}

bool MemoryScheduler::runOneTimer() {
  if (isShutDown()) return false;
  const auto timer = nextTimer();
  const auto now = elapsed();
  if (!timer || timer->due() > now) return false;
  timer->turn(now);
  return true;
}

void MemoryScheduler::runAll() {
  for (int i = 0; runOne(); ++i) {
    if (i == kEndlessWork) throw std::runtime_error("the tasks of the main queue never end");
  }
}

void MemoryScheduler::runReady() {
  if (running_) return;
  const RunningScope scope(running_);
  runAll();
}

void MemoryScheduler::runReady(std::chrono::microseconds budget) {
  if (running_) return;
  const RunningScope scope(running_);
  const auto start = RealClock::now();
  const auto spent = [start] {  // in the budget's own unit, in which no budget overflows
    return std::chrono::duration_cast<std::chrono::microseconds>(RealClock::now() - start);
  };
  while (runOne() && spent() < budget) {
  }
}

void MemoryScheduler::advance(std::chrono::nanoseconds duration) {
  if (running_) return;
  const RunningScope scope(running_);
  const auto end = elapsed() + duration;
  runAll();
  for (auto timer = nextTimer(); timer && timer->due() <= end; timer = nextTimer()) {
    setElapsed(timer->due());
    timer.reset();  // only its holder keeps it
    runAll();
    if (isShutDown()) break;
  }
  setElapsed(end);
}

void MemoryScheduler::skip(std::chrono::nanoseconds duration) {
  setElapsed(elapsed() + duration);
}

void MemoryScheduler::runUntil(const std::function<bool()>& done, const std::string& what,
                               std::chrono::milliseconds bound) {
  const auto end = RealClock::now() + bound;
  while (true) {
    runReady();
    if (done()) return;
    if (RealClock::now() >= end) throw std::runtime_error("waited in vain for " + what);
    // Other threads may bring it about without adding a task, so it is looked at again soon.
    const LockGuard lock(mutex_);
    if (tasks_.empty()) added_.wait_for(mutex_, std::chrono::milliseconds(1));
  }
}

std::shared_ptr<Timer> MemoryScheduler::scheduleRepeating(std::chrono::milliseconds interval,
                                                          std::function<void()> callback) {
  auto timer = std::make_shared<MemoryTimer>(elapsed(), interval, std::move(callback));
  timers_.push_back(timer);
  return timer;
}

// Returns the valid timer that is due first; of several, the one that was made first.
std::shared_ptr<MemoryTimer> MemoryScheduler::nextTimer() {
  std::shared_ptr<MemoryTimer> next;
  std::erase_if(timers_, [&next](const auto& weak) {
    const auto timer = weak.lock();
    if (!timer || !timer->isValid()) return true;
    if (!next || timer->due() < next->due()) next = timer;
    return false;
  });
  return next;
}

std::size_t MemoryScheduler::activeTimerCount() {
  nextTimer();
  return timers_.size();
}

std::chrono::nanoseconds MemoryScheduler::elapsed() const {
  const LockGuard lock(mutex_);
  return elapsed_;
}

void MemoryScheduler::setElapsed(std::chrono::nanoseconds elapsed) {
  const LockGuard lock(mutex_);
  elapsed_ = std::max(elapsed_, elapsed);
}

double MemoryScheduler::secondsSince1970() const {
  const LockGuard lock(mutex_);
  return wallOffset_ + seconds(elapsed_);
}

double MemoryScheduler::systemUptime() const {
  const LockGuard lock(mutex_);
  return kStartOfUptime + seconds(elapsed_);
}

void MemoryScheduler::setTime(double secondsSince1970) {
  const LockGuard lock(mutex_);
  wallOffset_ = secondsSince1970 - seconds(elapsed_);
}

}  // namespace zovk
