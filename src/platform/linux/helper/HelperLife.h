#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/helper/HelperSocket.h"
#include "platform/linux/system/LinuxMainQueue.h"

namespace zovk {

/// One running helper: its process, its socket and the time it has to become ready. Main thread
/// only; both callbacks come from the pump. Dropping it closes the socket; the process is to be
/// taken out before.
class HelperLife {
 public:
  struct Events {
    std::function<void(HelperMessage message)> message;
    /// The helper is of no use any more. Said once, as the last thing.
    std::function<void(const std::string& reason)> lost;
  };

  static std::shared_ptr<HelperLife> open(LinuxMainQueue& queue, const HelperLauncher& launcher,
                                          HelperLauncher::Started started, Events events);
  HelperLife(LinuxMainQueue& queue, const HelperLauncher& launcher, HelperLauncher::Started started,
             Events events);
  ~HelperLife();
  HelperLife(const HelperLife&) = delete;
  HelperLife& operator=(const HelperLife&) = delete;

  /// False when the message is too long.
  bool send(const HelperMessage& message, UniqueFd file = {});
  /// The helper is ready: its time is not measured any longer.
  void stopTimeout();
  /// Closes the socket for both sides, even where a copy of it is open; nothing is said any more.
  void close();
  pid_t pid() const { return process_ ? process_->pid() : 0; }
  std::optional<HelperProcess> takeProcess();

 private:
  void watch(const std::shared_ptr<HelperLife>& self, std::chrono::milliseconds timeout);
  // Takes in so much that it is little work, and delivers at most one message, so that the pump can
  // keep to its budget. Whether there may be more to read.
  bool read();
  void awaitWritable();
  void flush();
  void processEnded();
  void timedOut();
  void lose(const std::string& reason);
  std::string endOfProcess();

  LinuxMainQueue& queue_;
  HelperSocket connection_;
  std::optional<HelperProcess> process_;
  UniqueFd timeout_;
  UniqueFd writable_;  // readable when the socket can be written to
  Events events_;
  std::string error_;  // what the system refused; empty while all is well
  bool closed_ = false;
};

}  // namespace zovk
