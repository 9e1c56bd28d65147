#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

namespace zovk {

/// One message between the game and its web host: an object with a text member "type".
using WebHostMessage = boost::json::object;

inline constexpr std::uint32_t kMaximumFrameLength = 64U * 1024 * 1024;
/// How deep arrays and objects may lie in one another, the message itself included.
inline constexpr std::size_t kMaximumMessageDepth = 256;
inline constexpr int kWebHostProtocolVersion = 1;
/// The descriptor on which the helper finds its end of the socket pair.
inline constexpr int kWebHostDescriptor = 3;

/// Text of a frame: four bytes of length, least significant first, then the JSON. Any thread.
/// Absent when the message does not fit into a frame.
std::optional<std::string> encodeFrame(const WebHostMessage& message);

/// Cuts a stream of bytes into messages. One thread at a time. Once `failed`, the stream is of no
/// use any more: nothing comes out of it, and the connection should be closed.
class FrameDecoder {
 public:
  void feed(std::string_view bytes);
  /// The next whole message; absent when more bytes are needed or the stream is broken.
  std::optional<WebHostMessage> next();
  bool failed() const { return !error_.empty(); }
  /// What was wrong with the stream; empty while all is well.
  const std::string& error() const { return error_; }

 private:
  std::string buffer_;
  std::size_t consumed_ = 0;
  std::string error_;
};

}  // namespace zovk
