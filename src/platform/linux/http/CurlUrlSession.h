#pragma once

#include <memory>

#include "platform/linux/http/CurlSessionSettings.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

class CurlWorker;

/// Sends requests with libcurl, HTTP and HTTPS only, on one thread, which starts with the first
/// request. The address of an answer is the one after at most 16 redirects; an answer of more than
/// 64 MiB, or one that is too slow by the settings, ends in an error. Requests that are too many at
/// a time by the settings wait for their turn. Proxies come from the environment, certificates are
/// always checked against those of the system and of the settings. A download that was kept from an
/// earlier time is asked for with its validators, and costs no body when it is unchanged; its
/// completion sees a whole file all the same. Tasks may outlive the session and do nothing then.
class CurlUrlSession : public UrlSession {
 public:
  explicit CurlUrlSession(CurlSessionSettings settings = {});
  ~CurlUrlSession() override;
  CurlUrlSession(const CurlUrlSession&) = delete;
  CurlUrlSession& operator=(const CurlUrlSession&) = delete;

  std::shared_ptr<UrlTask> dataTask(UrlRequest request,
                                    std::function<void(const DataResult&)> completion) override;
  std::shared_ptr<UrlTask> downloadTask(
      std::string url, std::function<void(const DownloadResult&)> completion) override;

  /// Ends the thread, waiting for a completion that runs; the completions of all other requests
  /// are dropped without being called, and temporary files removed. Repeatable.
  void shutDown();

 private:
  const std::shared_ptr<CurlWorker> worker_;
};

}  // namespace zovk
