#include "platform/linux/system/LinuxMainQueue.h"

#include <cerrno>
#include <cstdint>
#include <future>
#include <memory>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>

namespace zovk {
namespace {

using SteadyClock = std::chrono::steady_clock;

class FlagWhile {
 public:
  explicit FlagWhile(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagWhile() { flag_ = false; }
  FlagWhile(const FlagWhile&) = delete;
  FlagWhile& operator=(const FlagWhile&) = delete;

 private:
  bool& flag_;
};

}  // namespace

LinuxMainQueue::LinuxMainQueue() : signal_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!signal_) throw std::system_error(errno, std::generic_category(), "eventfd");
  sources_.add(signal_.get(), [this] { runTasks(); });
}

LinuxMainQueue::~LinuxMainQueue() {
  shutDown();
}

void LinuxMainQueue::async(Task task) {
  const LockGuard lock(mutex_);
  if (shutDown_ || !task) return;
  tasks_.push_back(std::move(task));
  if (tasks_.size() == 1) raiseSignal();
}

void LinuxMainQueue::sync(const Task& task) {
  if (isMainThread()) {
    if (!isShutDown()) task();
    return;
  }
  // The promise ends with the queued task, whether that was run or dropped.
  auto promise = std::make_shared<std::promise<void>>();
  const std::future<void> ended = promise->get_future();
  async([&task, held = std::move(promise)] { task(); });
  ended.wait();
}

bool LinuxMainQueue::isMainThread() const {
  return std::this_thread::get_id() == mainThread_;
}

bool LinuxMainQueue::isShutDown() const {
  const LockGuard lock(mutex_);
  return shutDown_;
}

void LinuxMainQueue::addSource(int fd, PollSet::Callback callback) {
  sources_.add(fd, std::move(callback));
}

void LinuxMainQueue::removeSource(int fd) {
  sources_.remove(fd);
}

void LinuxMainQueue::pump(std::chrono::microseconds budget) {
  if (pumping_) return;
  const FlagWhile pumping(pumping_);
  const Deadline now = SteadyClock::now();
  // A host may say "as long as it takes" with a budget that no clock can hold.
  const bool bounded = budget < std::chrono::hours(24);
  deadline_ = bounded ? now + budget : Deadline::max();
  while (sources_.dispatchOne() && SteadyClock::now() < deadline_) {
  }
}

void LinuxMainQueue::runTasks() {
  do {
    const Task task = takeTask();
    if (!task) return;
    task();
  } while (SteadyClock::now() < deadline_);
}

LinuxMainQueue::Task LinuxMainQueue::takeTask() {
  const LockGuard lock(mutex_);
  if (tasks_.empty()) return nullptr;
  Task task = std::move(tasks_.front());
  tasks_.pop_front();
  if (tasks_.empty()) clearSignal();
  return task;
}

void LinuxMainQueue::shutDown() {
  std::deque<Task> dropped;  // let go of without the lock: a task's end may add another task
  {
    const LockGuard lock(mutex_);
    shutDown_ = true;
    dropped.swap(tasks_);
    clearSignal();
  }
  sources_.clear();
}

void LinuxMainQueue::raiseSignal() {
  const std::uint64_t one = 1;
  // Neither call can fail on a counter that is 0 or 1.
  [[maybe_unused]] const auto written = ::write(signal_.get(), &one, sizeof one);
}

void LinuxMainQueue::clearSignal() {
  std::uint64_t count = 0;
  [[maybe_unused]] const auto readCount = ::read(signal_.get(), &count, sizeof count);
}

}  // namespace zovk
