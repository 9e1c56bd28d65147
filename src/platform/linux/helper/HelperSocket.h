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

/// The game's end of the socket: sends and receives messages, and never waits. Main thread only.
class HelperSocket {
 public:
  HelperSocket(UniqueFd socket, std::size_t maximumPendingBytes);

  int descriptor() const { return socket_.get(); }
  /// Sends a message. Returns false if it is too long for a frame. Bytes that the socket does not
  /// take now wait; if too many wait, the stream ends. `file`, if there is one, goes with the
  /// message's first byte.
  bool send(const HelperMessage& message, UniqueFd file = {});
  /// Returns whether bytes wait for the socket to become writable.
  bool isPending() const { return sent_ < pending_.size(); }
  void flush();

  enum class Filled { kSomething, kNothing, kEnd };
  /// Reads a part of the available bytes, never more than belongs to one message.
  Filled fill();
  /// Returns the next whole message among the bytes read so far. A long one is only collected.
  std::optional<HelperMessage> next() { return decoder_.next(); }
  /// Returns the text of a long message once it is there. Until it was taken, do not call `fill`.
  std::optional<MappedBytes> takeLong() { return decoder_.takeText(); }
  /// Returns what ended the stream; empty if the other end just closed it.
  std::string error() const { return error_.empty() ? decoder_.error() : error_; }
  bool failed() const { return decoder_.failed(); }

 private:
  /// Beyond it, what the parser moves about in memory would take too long for a turn of the pump.
  static constexpr std::size_t kLongestParsedAtOnce = std::size_t{256} * 1024;

  // Returns the number of bytes that went out; 0 if the socket is full or closed.
  std::size_t write(const char* bytes, std::size_t length);
  // Makes one system call.
  ssize_t writeOnce(const char* bytes, std::size_t length, int file) const;
  void keep(std::string_view bytes);

  UniqueFd socket_;
  const std::size_t maximumPendingBytes_;
  FrameDecoder decoder_{kLongestParsedAtOnce};
  /// A file that goes with the byte at this position in the stream.
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
