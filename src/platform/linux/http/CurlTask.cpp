#include "platform/linux/http/CurlTask.h"

#include <utility>

#include "platform/linux/http/CurlWorker.h"

namespace zovk {

CurlTask::CurlTask(std::weak_ptr<CurlWorker> worker, std::unique_ptr<CurlJob> job)
    : worker_(std::move(worker)), job_(std::move(job)) {}

void CurlTask::resume() {
  if (resumed_.exchange(true)) return;
  auto job = std::move(job_);
  job->task = shared_from_this();
  if (const auto worker = worker_.lock()) worker->start(std::move(job));
}

void CurlTask::cancel() {
  cancelled_ = true;
  if (const auto worker = worker_.lock()) worker->wakeUp();
}

}  // namespace zovk
