#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "platform/linux/http/ResponseSink.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

class CurlTask;
class CurlWorker;

/// A request and its completion. It moves from the task to the session. It is destroyed once the
/// completion has run or was dropped, however long the task itself lives.
struct CurlJob {
  enum class Kind { kData, kDownload };
  Kind kind = Kind::kData;
  UrlRequest request;
  std::string host;  ///< The host of the address; known once the session has the job.
  std::unique_ptr<ResponseSink> sink;
  std::shared_ptr<CurlTask> task;  ///< Set while the session has the job.
};

/// A request that can be sent. Any thread.
class CurlTask : public UrlTask, public std::enable_shared_from_this<CurlTask> {
 public:
  CurlTask(std::weak_ptr<CurlWorker> worker, std::unique_ptr<CurlJob> job);

  void resume() override;
  void cancel() override;
  bool isCancelled() const { return cancelled_; }

 private:
  const std::weak_ptr<CurlWorker> worker_;
  std::unique_ptr<CurlJob> job_;  // belongs to whoever is the first to resume
  std::atomic<bool> resumed_{false};
  std::atomic<bool> cancelled_{false};
};

}  // namespace zovk
