#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "protocol/FrameCodec.h"
#include "support/UniqueFd.h"

namespace zovk {

/// The game's end of the socket: messages in and out, never waiting. Main thread only.
class HelperSocket {
 public:
  HelperSocket(UniqueFd socket, std::size_t maximumPendingBytes);

  int descriptor() const { return socket_.get(); }
  /// False when the message is too long for a frame. What the socket does not take now waits; when
  /// too much waits, the stream ends.
  /// `file`, if there is one, goes with the message's first byte.
  bool send(const HelperMessage& message, UniqueFd file = {});
  /// Whether something waits for the socket to become writable.
  bool isPending() const { return sent_ < pending_.size(); }
  void flush();

  enum class Filled { kSomething, kNothing, kEnd };
  /// Takes in a part of what has come, never more than belongs to one message.
  Filled fill();
  /// The next whole message of what was taken in.
  std::optional<HelperMessage> next() { return decoder_.next(); }
  /// What ended the stream; empty when the other end just closed it.
  std::string error() const { return error_.empty() ? decoder_.error() : error_; }
  bool failed() const { return decoder_.failed(); }

 private:
  // The number of bytes that went out; 0 when the socket is full or closed.
  std::size_t write(const char* bytes, std::size_t length);
  // One call of the system's.
  ssize_t writeOnce(const char* bytes, std::size_t length, int file) const;
  void keep(std::string_view bytes);

  UniqueFd socket_;
  const std::size_t maximumPendingBytes_;
  FrameDecoder decoder_;
  /// A file to go with the byte that has this number in the stream.
  struct Attached {
    std::uint64_t position;
    UniqueFd file;
  };
  std::deque<Attached> files_;
  std::uint64_t written_ = 0;  // bytes that went out so far
  std::string pending_;
  std::size_t sent_ = 0;
  std::string error_;
};

}  // namespace zovk
