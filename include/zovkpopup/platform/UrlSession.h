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
  /// How long the transfer may stand still; absent means the session's own default.
  std::optional<std::chrono::seconds> timeout;
};

/// The end of a transfer. Exactly one of `error` and the result is present: any answer without a
/// transport error is a success, whatever its status.
struct UrlResult {
  std::string url;                   ///< The address that answered, after redirects.
  std::optional<std::string> error;  ///< What went wrong in the transport.
  int status = 0;                    ///< The HTTP status; 0 without an answer.
};

struct DataResult : UrlResult {
  std::optional<std::string> body;
};

struct DownloadResult : UrlResult {
  /// A temporary file, gone when the completion returns.
  std::optional<std::string> path;
};

/// One transfer. Any thread. It starts with `resume`; the session keeps it alive until its
/// completion has run. `cancel` ends it with a transport error.
class UrlTask {
 public:
  virtual ~UrlTask() = default;
  virtual void resume() = 0;
  virtual void cancel() = 0;
};

/// Sends prepared requests. Any thread; calls return at once. Completions run once for each
/// resumed task, one after another, on a thread of the session that is never the main thread. The
/// session owns requests and completions until they have run. An address that cannot be parsed,
/// like any other failure, ends in a completion with an error.
class UrlSession {
 public:
  virtual ~UrlSession() = default;
  virtual std::shared_ptr<UrlTask> dataTask(UrlRequest request,
                                            std::function<void(const DataResult&)> completion) = 0;
  virtual std::shared_ptr<UrlTask> downloadTask(
      std::string url, std::function<void(const DownloadResult&)> completion) = 0;
};

}  // namespace zovk
