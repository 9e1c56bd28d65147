#include "platform/linux/http/CurlUrlSession.h"

#include <utility>

#include "platform/linux/http/CurlTask.h"
#include "platform/linux/http/CurlWorker.h"
#include "platform/linux/http/ResponseSink.h"

namespace zovk {

CurlUrlSession::CurlUrlSession(CurlSessionSettings settings)
    : worker_(std::make_shared<CurlWorker>(std::move(settings))) {}

CurlUrlSession::~CurlUrlSession() {
  shutDown();
}

std::shared_ptr<UrlTask> CurlUrlSession::dataTask(
    UrlRequest request, std::function<void(const DataResult&)> completion) {
  auto job = std::make_unique<CurlJob>();
  job->kind = CurlJob::Kind::kData;
  job->request = std::move(request);
  job->sink = std::make_unique<DataSink>(std::move(completion));
  return std::make_shared<CurlTask>(worker_, std::move(job));
}

std::shared_ptr<UrlTask> CurlUrlSession::downloadTask(
    std::string url, std::function<void(const DownloadResult&)> completion) {
  auto job = std::make_unique<CurlJob>();
  job->kind = CurlJob::Kind::kDownload;
  job->request.url = std::move(url);
  job->sink = std::make_unique<DownloadSink>(job->request.url, std::move(completion));
  return std::make_shared<CurlTask>(worker_, std::move(job));
}

void CurlUrlSession::shutDown() {
  worker_->shutDown();
}

}  // namespace zovk
