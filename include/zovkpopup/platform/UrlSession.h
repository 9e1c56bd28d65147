#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zovk {

struct UrlRequest {
  std::string url;
  std::string method = "GET";
  std::optional<std::string> body;
  /// How long the transfer may pause; absent means the session's default.
  std::optional<std::chrono::seconds> timeout;
};

/// The end of a transfer. Either `error` or the result is present. Any answer without a transport
/// error is a success, whatever its status.
struct UrlResult {
  std::string url;                   ///< The address that answered, after redirects.
  std::optional<std::string> error;  ///< The transport error.
  int status = 0;                    ///< The HTTP status, or 0 if there was no answer.
};

struct DataResult : UrlResult {
  std::optional<std::string> body;
};

struct DownloadResult : UrlResult {
  /// A temporary file; it is removed when the completion returns.
  std::optional<std::string> path;
};

/// One transfer. Any thread. `resume` starts it. The session keeps it alive until its completion
/// has run. `cancel` ends it with a transport error.
class UrlTask {
 public:
  virtual ~UrlTask() = default;
  virtual void resume() = 0;
  virtual void cancel() = 0;
};

/// Sends prepared requests. Any thread; calls return at once. The completion of each resumed task
/// runs once. Completions run one after another, on a thread of the session that is never the main
/// thread. The session owns requests and completions until they have run. An address that cannot be
/// parsed ends in a completion with an error, like any other failure.
class UrlSession {
 public:
  virtual ~UrlSession() = default;
  virtual std::shared_ptr<UrlTask> dataTask(UrlRequest request,
                                            std::function<void(const DataResult&)> completion) = 0;
  virtual std::shared_ptr<UrlTask> downloadTask(
      std::string url, std::function<void(const DownloadResult&)> completion) = 0;
};

}  // namespace zovk
