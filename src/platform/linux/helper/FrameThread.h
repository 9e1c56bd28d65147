#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include <sys/types.h>

#include "platform/linux/system/LinuxMainQueue.h"
#include "protocol/FrameParser.h"
#include "protocol/MappedBytes.h"

namespace zovk {

/// Parses long frames on a thread of its own, and gives their memory back there: both would hold up
/// the game. The thread starts with the first of them. Main thread only; the queue must outlive it.
/// In a forked copy of the process it does nothing.
class FrameThread {
 public:
  struct Parsed {
    std::optional<HelperMessage> message;
    std::string error;  // what is wrong with the text; empty if there is a message
  };
  using Receiver = std::function<void(Parsed)>;

  explicit FrameThread(LinuxMainQueue& queue);
  ~FrameThread();
  FrameThread(const FrameThread&) = delete;
  FrameThread& operator=(const FrameThread&) = delete;

  /// Parses the text of a frame. `receiver` is called from the pump, once, or never if the thread
  /// is shut down before. Throws std::system_error if there can be no thread.
  void parse(MappedBytes text, Receiver receiver);
  /// Ends the thread, at once if it waits, else within a piece of a text. May be repeated.
  void shutDown();

 private:
  class Work;
  static Parsed parseOnThread(const MappedBytes& text, const std::shared_ptr<Work>& work);

  LinuxMainQueue& queue_;
  const pid_t process_;
  // Messages keep it, too: they may outlive the thread.
  const std::shared_ptr<Work> work_;
  std::thread thread_;
};

}  // namespace zovk
