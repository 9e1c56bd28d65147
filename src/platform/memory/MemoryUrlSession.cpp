#include "platform/memory/MemoryUrlSession.h"

#include <algorithm>
#include <utility>

#include "platform/memory/MemoryUrlSessionCore.h"

namespace zovk {
namespace {

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

}  // namespace

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

MemoryUrlSession::MemoryUrlSession(MemoryFileSystem& files)
    : core_(std::make_shared<Core>(files)) {}

MemoryUrlSession::~MemoryUrlSession() {
  shutDown();
}

std::shared_ptr<UrlTask> MemoryUrlSession::dataTask(
    UrlRequest request, std::function<void(const DataResult&)> completion) {
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

std::shared_ptr<UrlTask> MemoryUrlSession::downloadTask(
    std::string url, std::function<void(const DownloadResult&)> completion) {
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
