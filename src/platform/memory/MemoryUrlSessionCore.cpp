#include "platform/memory/MemoryUrlSessionCore.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "text/WebAddress.h"

namespace zovk {
namespace {

template <class Result>
Result resultOf(const MemoryRequest& request, const MemoryAnswer& answer) {
  Result result;
  result.url = answer.url.empty() ? request.url : answer.url;
  result.error = answer.error;
  if (!answer.error) result.status = answer.status;
  return result;
}

MemoryAnswer failure(std::string error) {
  MemoryAnswer answer;
  answer.error = std::move(error);
  return answer;
}

}  // namespace

void MemoryUrlSession::Core::resume(const TransferPtr& transfer) {
  {
    const LockGuard lock(mutex_);
    if (stopped_ || transfer->resumed) return;
    transfer->resumed = true;
    if (auto address = readWebAddress(transfer->request.url)) {
      transfer->request.url = std::move(address->text);
      transfer->canBeSent = true;
    }
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
    if (!transfer->canBeSent) return failure("unusable address");
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

// Returns nothing if nothing is to be delivered, or a completion is still running.
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
  std::vector<std::function<void(const DataResult&)>> data;
  std::vector<std::function<void(const DownloadResult&)>> downloads;
  const LockGuard lock(mutex_);
  stopped_ = true;
  dropped.swap(answered_);
  for (const auto& transfer : sent_) {
    data.push_back(std::move(transfer->data));
    downloads.push_back(std::move(transfer->download));
  }
  changed_.notify_all();
}

}  // namespace zovk
