#include "platform/linux/helper/FrameThread.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include <unistd.h>

#include "platform/linux/helper/MessageMemory.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {
namespace {

// Parsed before the thread looks whether it should end: some milliseconds.
constexpr std::size_t kPiece = std::size_t{1} << 20;

// What the parser needs until it is done. Long texts go back to the system as soon as they have
// been copied, where ordinary memory would keep their place.
class WorkingMemory : public boost::json::memory_resource {
  static constexpr std::size_t kLong = std::size_t{128} * 1024;

  void* do_allocate(std::size_t size, std::size_t alignment) override {
    if (size < kLong) return ::operator new(size, std::align_val_t(alignment));
    blocks_.emplace_back(size);
    return blocks_.back().data();
  }
  void do_deallocate(void* place, std::size_t size, std::size_t alignment) override {
    if (size < kLong) return ::operator delete(place, std::align_val_t(alignment));
    std::erase_if(blocks_, [place](const MappedBytes& block) { return block.data() == place; });
  }
  bool do_is_equal(const boost::json::memory_resource& other) const noexcept override {
    return this == &other;
  }

  std::vector<MappedBytes> blocks_;
};

}  // namespace

/// What the thread has to do. Any thread.
class FrameThread::Work {
 public:
  using Task = std::function<void()>;

  /// Returns false if the thread has ended or is about to: nobody will do it.
  bool add(Task task) {
    const LockGuard lock(mutex_);
    if (ended_) return false;
    tasks_.push_back(std::move(task));
    changed_.notify_one();
    return true;
  }
  void end() {
    std::deque<Task> dropped;
    const LockGuard lock(mutex_);
    ended_ = true;
    dropped.swap(tasks_);
    changed_.notify_one();
  }
  bool hasEnded() {
    const LockGuard lock(mutex_);
    return ended_;
  }
  void run() {
    while (const Task task = next()) task();
  }

 private:
  /// Waits for the next task. Returns none at the end.
  Task next() {
    const LockGuard lock(mutex_);
    while (tasks_.empty() && !ended_) changed_.wait(mutex_);
    if (ended_) return nullptr;
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
  }

  Mutex mutex_;
  std::condition_variable_any changed_;
  std::deque<Task> tasks_ ZOVK_GUARDED_BY(mutex_);
  bool ended_ ZOVK_GUARDED_BY(mutex_) = false;
};

FrameThread::FrameThread(LinuxMainQueue& queue)
    : queue_(queue), process_(::getpid()), work_(std::make_shared<Work>()) {}

FrameThread::~FrameThread() {
  shutDown();
}

void FrameThread::parse(MappedBytes text, Receiver receiver) {
  if (!thread_.joinable()) thread_ = std::thread([work = work_] { work->run(); });
  // Tasks can be copied, and the text cannot.
  auto held = std::make_shared<const MappedBytes>(std::move(text));
  work_->add([this, held = std::move(held), receiver = std::move(receiver)] {
    auto parsed = std::make_shared<Parsed>(parseOnThread(*held, work_));
    queue_.async([receiver, parsed] { receiver(std::move(*parsed)); });
  });
}

void FrameThread::shutDown() {
  if (!thread_.joinable()) return;
  if (::getpid() != process_) return thread_.detach();  // the fork did not take it along
  work_->end();
  thread_.join();
}

FrameThread::Parsed FrameThread::parseOnThread(const MappedBytes& text,
                                               const std::shared_ptr<Work>& work) {
  const auto release = [work](MessageMemory::Blocks blocks) {
    try {
      auto held = std::make_shared<MessageMemory::Blocks>(std::move(blocks));
      work->add([held] { held->clear(); });
    } catch (const std::bad_alloc&) {
      // Then it is given back here.
    }
  };
  const auto isFull = std::make_shared<bool>(false);
  auto memory = boost::json::make_shared_resource<MessageMemory>(isFull, release);
  WorkingMemory working;
  FrameParser parser(memory, &working);
  Parsed parsed;
  try {
    for (std::size_t read = 0; read < text.size(); read += kPiece) {
      if (work->hasEnded()) return parsed;
      const std::string_view rest(text.data() + read, text.size() - read);
      if (!parser.write(rest.substr(0, kPiece))) break;
    }
    if (parser.error().empty()) parsed.message = parser.finish();
    parsed.error = parser.error();
  } catch (const std::bad_alloc&) {
    parsed.error = "no memory for a frame";
  }
  *isFull = true;
  return parsed;
}

}  // namespace zovk
