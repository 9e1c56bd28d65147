#pragma once

#include <memory>

#include "platform/linux/http/CurlSessionSettings.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

class CurlWorker;

/// Sends requests with libcurl, HTTP and HTTPS only, on one thread, which starts with the first
/// request. The address of an answer is the one after at most 16 redirects. An answer of more than
/// 64 MiB, or one that is too slow by the settings, ends in an error. If too many requests run at a
/// time by the settings, further ones wait for their turn. Proxies come from the environment.
/// Certificates are always checked against those of the system and of the settings. A download that
/// was kept from an earlier start is requested with its validators, and costs no body if it has not
/// changed; its completion gets a whole file in both cases. Tasks may outlive the session and then
/// do nothing.
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

  /// Ends the thread, and waits for a completion that is running. The completions of all other
  /// requests are dropped without a call, and temporary files are removed. May be repeated.
  void shutDown();

 private:
  const std::shared_ptr<CurlWorker> worker_;
};

}  // namespace zovk
