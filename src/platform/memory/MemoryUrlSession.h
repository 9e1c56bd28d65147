#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/memory/MemoryFileSystem.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

/// A request that was sent: its task was resumed.
struct MemoryRequest {
  enum class Kind { kData, kDownload };
  Kind kind = Kind::kData;
  std::string url;
  std::string method;
  std::optional<std::string> body;
  std::optional<std::chrono::seconds> timeout;
  bool answered = false;   ///< An answer, a failure or a cancellation is on its way or delivered.
  bool delivered = false;  ///< The completion has run.
};

/// The answer to a request. With an `error` the rest does not count.
struct MemoryAnswer {
  int status = 200;
  std::string body;
  std::optional<std::string> error;
  std::string url;  ///< The address that answered; empty means the requested one.
};

/// A session whose answers a test writes. Any thread. Completions run one after another in the
/// order of the answers. By default they run on the thread that calls `deliver`, which is
/// deterministic; after `useThread`, on a thread of the session as soon as they are answered. A
/// request whose address cannot be parsed is answered with an error at once, and so is a cancelled
/// one. While its completion runs, the body of a download is in "/tmp/download-N" of the file
/// system. Refers to the file system, which must outlive it. Tasks may outlive the session and then
/// do nothing.
class MemoryUrlSession final : public UrlSession {
 public:
  using Handler = std::function<std::optional<MemoryAnswer>(const MemoryRequest&)>;

  explicit MemoryUrlSession(MemoryFileSystem& files);
  ~MemoryUrlSession() override;
  MemoryUrlSession(const MemoryUrlSession&) = delete;
  MemoryUrlSession& operator=(const MemoryUrlSession&) = delete;

  std::shared_ptr<UrlTask> dataTask(UrlRequest request,
                                    std::function<void(const DataResult&)> completion) override;
  std::shared_ptr<UrlTask> downloadTask(
      std::string url, std::function<void(const DownloadResult&)> completion) override;

  /// Returns every request sent so far, in order. The indexes below are places in this list.
  std::vector<MemoryRequest> requests() const;
  std::size_t requestCount() const { return requests().size(); }
  /// Returns the requests whose address contains the text.
  std::vector<MemoryRequest> requestsTo(std::string_view urlPart) const;
  MemoryRequest request(std::size_t index) const;
  /// Returns how many requests wait for an answer.
  std::size_t pendingCount() const;
  /// Returns how many tasks were made, resumed or not.
  std::size_t createdCount() const;

  /// Answers a waiting request; throws if there is none. A text means the oldest waiting request
  /// whose address contains it.
  void answer(std::size_t index, int status, std::string body);
  void answer(std::string_view urlPart, int status, std::string body);
  void answer(std::size_t index, MemoryAnswer answer);
  void answer(std::string_view urlPart, MemoryAnswer answer);
  void fail(std::size_t index, std::string error);
  void fail(std::string_view urlPart, std::string error);
  /// Sets a handler that answers requests when they are sent, on the sender's thread. Requests for
  /// which it returns nothing wait. Null removes it.
  void setHandler(Handler handler);

  /// Runs the completions of answered requests now, including those answered meanwhile. Returns how
  /// many; 0 if the session has its own thread.
  std::size_t deliver();
  /// From now on completions run on a thread of the session. May be repeated.
  void useThread();
  /// Returns whether every answered request has been delivered.
  bool isIdle() const;
  /// Drops everything that has not been delivered; nothing is called back afterwards. Waits for a
  /// completion that runs on the session's thread.
  void shutDown();

 private:
  class Core;
  class Task;
  std::shared_ptr<Core> core_;
  std::thread thread_;
};

}  // namespace zovk
