#include "platform/memory/MemoryUrlSession.h"

#include <algorithm>
#include <cctype>
#include <condition_variable>
#include <deque>
#include <stdexcept>
#include <utility>

#include "support/ThreadSafety.h"

namespace zovk {
namespace {

using DataCompletion = std::function<void(const DataResult&)>;
using DownloadCompletion = std::function<void(const DownloadResult&)>;

bool canBeParsed(const std::string& url) {
  const auto colon = url.find("://");
  if (colon == std::string::npos || std::isalpha(static_cast<unsigned char>(url[0])) == 0) {
    return false;
  }
  return colon + 3 < url.size() &&
         std::none_of(url.begin(), url.end(), [](char c) { return (c >= 0 && c <= ' '); });
}

MemoryAnswer failure(std::string error) {
  MemoryAnswer answer;
  answer.error = std::move(error);
  return answer;
}

MemoryAnswer success(int status, std::string body) {
  MemoryAnswer answer;
  answer.status = status;
  answer.body = std::move(body);
  return answer;
}

template <class Result>
Result resultOf(const MemoryRequest& request, const MemoryAnswer& answer) {
  Result result;
  result.url = answer.url.empty() ? request.url : answer.url;
  result.error = answer.error;
  if (!answer.error) result.status = answer.status;
  return result;
}

}  // namespace

// What the session, its thread and its tasks share.
class MemoryUrlSession::Core {
 public:
  struct Transfer {
    MemoryRequest request;
    DataCompletion data;
    DownloadCompletion download;
    bool resumed = false;
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
  // False when the session already has a thread.
  bool becomeThreaded();
  std::size_t deliver();
  void deliverUntilStopped();
  void stop();

 private:
  struct Answered {
    TransferPtr transfer;
    MemoryRequest request;
    DataCompletion data;
    DownloadCompletion download;
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

class MemoryUrlSession::Task final : public UrlTask {
 public:
  Task(std::weak_ptr<Core> core, Core::TransferPtr transfer)
      : core_(std::move(core)), transfer_(std::move(transfer)) {}
  void resume() override {
    if (const auto core = core_.lock()) core->resume(transfer_);
  }
  void cancel() override {
    if (const auto core = core_.lock()) core->cancel(transfer_);
  }

 private:
  const std::weak_ptr<Core> core_;
  const Core::TransferPtr transfer_;
};

void MemoryUrlSession::Core::resume(const TransferPtr& transfer) {
  {
    const LockGuard lock(mutex_);
    if (stopped_ || transfer->resumed) return;
    transfer->resumed = true;
    sent_.push_back(transfer);
  }
  if (auto answer = answerAtOnce(transfer)) settle(transfer, std::move(*answer));
}

std::optional<MemoryAnswer> MemoryUrlSession::Core::answerAtOnce(const TransferPtr& transfer) {
  Handler handler;
  MemoryRequest request;
  {
    const LockGuard lock(mutex_);
    if (transfer->cancelled) return failure("cancelled");
    if (!canBeParsed(transfer->request.url)) return failure("unsupported URL");
    handler = handler_;
    request = transfer->request;
  }
  return handler ? handler(request) : std::nullopt;
}

void MemoryUrlSession::Core::cancel(const TransferPtr& transfer) {
  {
    const LockGuard lock(mutex_);
    transfer->cancelled = true;
    if (!transfer->resumed) return;
  }
  settle(transfer, failure("cancelled"));
}

bool MemoryUrlSession::Core::settle(const TransferPtr& transfer, MemoryAnswer answer) {
  const LockGuard lock(mutex_);
  if (stopped_ || transfer->request.answered) return false;
  transfer->request.answered = true;
  answered_.push_back({transfer, transfer->request, std::move(transfer->data),
                       std::move(transfer->download), std::move(answer)});
  changed_.notify_all();
  return true;
}

MemoryUrlSession::Core::TransferPtr MemoryUrlSession::Core::waiting(std::size_t index) const {
  const LockGuard lock(mutex_);
  if (index >= sent_.size()) {
    throw std::out_of_range("no request " + std::to_string(index) + " was sent");
  }
  return sent_[index];
}

MemoryUrlSession::Core::TransferPtr MemoryUrlSession::Core::waiting(
    std::string_view urlPart) const {
  const LockGuard lock(mutex_);
  std::string others;
  for (const auto& transfer : sent_) {
    if (transfer->request.answered) continue;
    if (transfer->request.url.find(urlPart) != std::string::npos) return transfer;
    others += "\n  " + transfer->request.url;
  }
  throw std::out_of_range("no request to " + std::string(urlPart) + " waits; these do:" + others);
}

void MemoryUrlSession::Core::setHandler(Handler handler) {
  const LockGuard lock(mutex_);
  handler_.swap(handler);  // the old one is dropped without the lock
}

std::vector<MemoryRequest> MemoryUrlSession::Core::requests() const {
  const LockGuard lock(mutex_);
  std::vector<MemoryRequest> copies;
  for (const auto& transfer : sent_) copies.push_back(transfer->request);
  return copies;
}

bool MemoryUrlSession::Core::becomeThreaded() {
  const LockGuard lock(mutex_);
  return !std::exchange(threaded_, true) && !stopped_;
}

// Absent when nothing is to be delivered, or a completion is still running.
std::optional<MemoryUrlSession::Core::Answered> MemoryUrlSession::Core::takeAnswered() {
  const LockGuard lock(mutex_);
  if (answered_.empty() || delivering_) return std::nullopt;
  Answered next = std::move(answered_.front());
  answered_.pop_front();
  delivering_ = true;
  return next;
}

void MemoryUrlSession::Core::complete(Answered& next) {
  if (next.data) {
    auto result = resultOf<DataResult>(next.request, next.answer);
    if (!result.error) result.body = next.answer.body;
    next.data(result);
  } else if (next.download) {
    completeDownload(next);
  }
  next.data = nullptr;  // what a completion holds is gone before the next one runs
  next.download = nullptr;
  const LockGuard lock(mutex_);
  next.transfer->request.delivered = true;
  delivering_ = false;
  changed_.notify_all();
}

void MemoryUrlSession::Core::completeDownload(const Answered& next) {
  auto result = resultOf<DownloadResult>(next.request, next.answer);
  if (result.error) {
    next.download(result);
    return;
  }
  {
    const LockGuard lock(mutex_);
    result.path = "/tmp/download-" + std::to_string(++downloads_);
  }
  files_.addFile(*result.path, next.answer.body);
  next.download(result);
  files_.take(*result.path);
}

std::size_t MemoryUrlSession::Core::deliver() {
  {
    const LockGuard lock(mutex_);
    if (threaded_) return 0;
  }
  std::size_t count = 0;
  for (auto next = takeAnswered(); next; next = takeAnswered()) {
    complete(*next);
    ++count;
  }
  return count;
}

void MemoryUrlSession::Core::deliverUntilStopped() {
  while (true) {
    {
      const LockGuard lock(mutex_);
      while (!stopped_ && (answered_.empty() || delivering_)) changed_.wait(mutex_);
      if (stopped_) return;
    }
    if (auto next = takeAnswered()) complete(*next);
  }
}

void MemoryUrlSession::Core::stop() {
  std::deque<Answered> dropped;
  std::vector<DataCompletion> data;
  std::vector<DownloadCompletion> downloads;
  const LockGuard lock(mutex_);
  stopped_ = true;
  dropped.swap(answered_);
  for (const auto& transfer : sent_) {
    data.push_back(std::move(transfer->data));
    downloads.push_back(std::move(transfer->download));
  }
  changed_.notify_all();
}

MemoryUrlSession::MemoryUrlSession(MemoryFileSystem& files)
    : core_(std::make_shared<Core>(files)) {}

MemoryUrlSession::~MemoryUrlSession() {
  shutDown();
}

std::shared_ptr<UrlTask> MemoryUrlSession::dataTask(UrlRequest request, DataCompletion completion) {
  const auto transfer = std::make_shared<Core::Transfer>();
  transfer->request = {MemoryRequest::Kind::kData,
                       std::move(request.url),
                       std::move(request.method),
                       std::move(request.body),
                       request.timeout,
                       false,
                       false};
  transfer->data = std::move(completion);
  core_->created();
  return std::make_shared<Task>(core_, transfer);
}

std::shared_ptr<UrlTask> MemoryUrlSession::downloadTask(std::string url,
                                                        DownloadCompletion completion) {
  const auto transfer = std::make_shared<Core::Transfer>();
  transfer->request.kind = MemoryRequest::Kind::kDownload;
  transfer->request.url = std::move(url);
  transfer->request.method = "GET";
  transfer->download = std::move(completion);
  core_->created();
  return std::make_shared<Task>(core_, transfer);
}

std::vector<MemoryRequest> MemoryUrlSession::requests() const {
  return core_->requests();
}

std::vector<MemoryRequest> MemoryUrlSession::requestsTo(std::string_view urlPart) const {
  auto found = requests();
  std::erase_if(found, [urlPart](const auto& request) {
    return request.url.find(urlPart) == std::string::npos;
  });
  return found;
}

MemoryRequest MemoryUrlSession::request(std::size_t index) const {
  return requests().at(index);
}

std::size_t MemoryUrlSession::pendingCount() const {
  const auto all = requests();
  return static_cast<std::size_t>(std::count_if(
      all.begin(), all.end(), [](const MemoryRequest& request) { return !request.answered; }));
}

std::size_t MemoryUrlSession::createdCount() const {
  return core_->createdCount();
}

void MemoryUrlSession::answer(std::size_t index, MemoryAnswer answer) {
  if (!core_->settle(core_->waiting(index), std::move(answer))) {
    throw std::logic_error("request " + std::to_string(index) + " was answered before");
  }
}

void MemoryUrlSession::answer(std::string_view urlPart, MemoryAnswer answer) {
  core_->settle(core_->waiting(urlPart), std::move(answer));
}

void MemoryUrlSession::answer(std::size_t index, int status, std::string body) {
  answer(index, success(status, std::move(body)));
}

void MemoryUrlSession::answer(std::string_view urlPart, int status, std::string body) {
  answer(urlPart, success(status, std::move(body)));
}

void MemoryUrlSession::fail(std::size_t index, std::string error) {
  answer(index, failure(std::move(error)));
}

void MemoryUrlSession::fail(std::string_view urlPart, std::string error) {
  answer(urlPart, failure(std::move(error)));
}

void MemoryUrlSession::setHandler(Handler handler) {
  core_->setHandler(std::move(handler));
}

std::size_t MemoryUrlSession::deliver() {
  return core_->deliver();
}

void MemoryUrlSession::useThread() {
  if (!core_->becomeThreaded()) return;
  thread_ = std::thread([core = core_] { core->deliverUntilStopped(); });
}

bool MemoryUrlSession::isIdle() const {
  return core_->isIdle();
}

void MemoryUrlSession::shutDown() {
  core_->stop();
  setHandler(nullptr);
  if (thread_.joinable()) thread_.join();
}

}  // namespace zovk
