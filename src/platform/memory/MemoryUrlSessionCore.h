#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/memory/MemoryUrlSession.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {

// The state that the session, its thread and its tasks share.
class MemoryUrlSession::Core {
 public:
  struct Transfer {
    MemoryRequest request;
    std::function<void(const DataResult&)> data;
    std::function<void(const DownloadResult&)> download;
    bool resumed = false;
    bool canBeSent = false;
    bool cancelled = false;
  };
  using TransferPtr = std::shared_ptr<Transfer>;

  explicit Core(MemoryFileSystem& files) : files_(files) {}

  void created() {
    const LockGuard lock(mutex_);
    ++created_;
  }
  void resume(const TransferPtr& transfer);
  void cancel(const TransferPtr& transfer);
  bool settle(const TransferPtr& transfer, MemoryAnswer answer);
  TransferPtr waiting(std::size_t index) const;
  TransferPtr waiting(std::string_view urlPart) const;
  void setHandler(Handler handler);
  std::vector<MemoryRequest> requests() const;
  std::size_t createdCount() const {
    const LockGuard lock(mutex_);
    return created_;
  }
  bool isIdle() const {
    const LockGuard lock(mutex_);
    return answered_.empty() && !delivering_;
  }
  // Returns false if the session already has a thread.
  bool becomeThreaded();
  std::size_t deliver();
  void deliverUntilStopped();
  void stop();

 private:
  struct Answered {
    TransferPtr transfer;
    MemoryRequest request;
    std::function<void(const DataResult&)> data;
    std::function<void(const DownloadResult&)> download;
    MemoryAnswer answer;
  };

  std::optional<MemoryAnswer> answerAtOnce(const TransferPtr& transfer);
  std::optional<Answered> takeAnswered();
  void complete(Answered& next);
  void completeDownload(const Answered& next);

  MemoryFileSystem& files_;
  mutable Mutex mutex_;
  std::condition_variable_any changed_;
  std::vector<TransferPtr> sent_ ZOVK_GUARDED_BY(mutex_);
  std::deque<Answered> answered_ ZOVK_GUARDED_BY(mutex_);
  Handler handler_ ZOVK_GUARDED_BY(mutex_);
  std::size_t created_ ZOVK_GUARDED_BY(mutex_) = 0;
  int downloads_ ZOVK_GUARDED_BY(mutex_) = 0;
  bool threaded_ ZOVK_GUARDED_BY(mutex_) = false;
  bool delivering_ ZOVK_GUARDED_BY(mutex_) = false;
  bool stopped_ ZOVK_GUARDED_BY(mutex_) = false;
};

}  // namespace zovk
