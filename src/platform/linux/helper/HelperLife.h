#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/helper/FrameThread.h"
#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/helper/HelperSocket.h"
#include "platform/linux/system/LinuxMainQueue.h"

namespace zovk {

/// One running helper: its process, its socket and the time it has to become ready. Main thread
/// only; both callbacks come from the pump. The destructor closes the socket; call `takeProcess`
/// before.
class HelperLife : public std::enable_shared_from_this<HelperLife> {
 public:
  struct Events {
    std::function<void(HelperMessage message)> message;
    /// The helper is of no use any more. Called once, as the last callback.
    std::function<void(const std::string& reason)> lost;
  };

  /// What all lives share. It outlives them.
  struct Surroundings {
    LinuxMainQueue& queue;
    FrameThread& frames;
    const HelperLauncher& launcher;
  };

  static std::shared_ptr<HelperLife> open(const Surroundings& surroundings,
                                          HelperLauncher::Started started, Events events);
  HelperLife(const Surroundings& surroundings, HelperLauncher::Started started, Events events);
  ~HelperLife();
  HelperLife(const HelperLife&) = delete;
  HelperLife& operator=(const HelperLife&) = delete;

  /// Returns false if the message is too long.
  bool send(const HelperMessage& message, UniqueFd file = {});
  /// The helper is lost unless it becomes ready in this time.
  void expectReady(std::chrono::milliseconds timeout);
  /// Stops the time limit: the helper is ready.
  void stopTimeout();
  /// Closes the socket for both sides, even if a copy of it is open. No callback follows.
  void close();
  pid_t pid() const { return process_ ? process_->pid() : 0; }
  std::optional<HelperProcess> takeProcess();

 private:
  // Calls back when there is something to read, the process has ended or the time is up.
  void watch();
  void unwatch();
  // Reads only a little and delivers at most one message, so that the pump can keep to its budget.
  // Returns whether there may be more to read.
  bool read();
  // Nothing more is read until the message has been delivered, so that the order stays.
  void parse(MappedBytes text);
  void parsed(FrameThread::Parsed result);
  void awaitWritable();
  void flush();
  void processEnded();
  void timedOut();
  void lose(const std::string& reason);
  std::string endOfProcess();

  LinuxMainQueue& queue_;
  FrameThread& frames_;
  HelperSocket connection_;
  std::optional<HelperProcess> process_;
  UniqueFd timeout_;
  UniqueFd writable_;  // readable when the socket can be written to
  Events events_;
  std::string error_;  // what the system refused; empty if nothing
  bool closed_ = false;
};

}  // namespace zovk
