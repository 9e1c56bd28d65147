#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "helper/GObjectPtr.h"
#include "helper/commands/CommandBatch.h"
#include "protocol/FrameCodec.h"
#include "support/LineLimit.h"
#include "support/UniqueFd.h"

namespace zovk::helper {

/// The helper's end of the socket to the game, driven by the main loop; no call waits. Main thread
/// only. `ended` is called once: when the game is gone, has sent bytes that are not a message, or
/// does not read the events. While a game reads too slowly, its pages' posts are dropped, with one
/// line a second; everything else is kept for it.
class Connection {
 public:
  Connection(int descriptor, std::function<void(const HelperMessage&)> receiver,
             std::function<void()> ended);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void send(const HelperMessage& message);
  /// Returns how many bytes wait for the game to read.
  std::size_t waiting() const { return waiting_; }
  /// Returns the next file that came with a frame, in the order of arrival; none if none waits.
  UniqueFd takeFile();
  /// While paused, nothing is received; the game's bytes wait.
  void pause();
  void resume();
  /// Gives the game a moment to read the queued events, before the process ends.
  void drain();

 private:
  static gboolean onReadable(int descriptor, GIOCondition condition, gpointer self);
  static gboolean onWritable(int descriptor, GIOCondition condition, gpointer self);
  static gboolean onResumed(gpointer self);
  void readSome();
  /// Reads the bytes that are there, at most as many as fit into one piece. Returns their number; 0
  /// at the socket's end, and less, as the system says why, if there are none.
  ssize_t receiveBytes();
  void readMore();
  void deliver();
  void deliverLater();
  void writeSome();
  void keep(std::string frame);
  /// Returns false if the socket takes nothing more now, or is closed.
  bool writeOnce();
  void sendLine(const std::optional<std::string>& line);
  void end();
  void endWith(const std::string& line);

  int descriptor_;
  std::function<void(const HelperMessage&)> receiver_;
  std::function<void()> ended_;
  FrameDecoder decoder_;
  CommandBatch batch_;
  std::deque<UniqueFd> files_;
  std::deque<std::string> output_;
  std::size_t written_ = 0;  // of the first frame
  std::size_t waiting_ = 0;  // bytes of all frames that are not written yet
  LineLimit leftOut_;
  bool paused_ = false;
  bool over_ = false;
  SourceGuard reading_;
  SourceGuard writing_;
  SourceGuard resuming_;
};

}  // namespace zovk::helper
