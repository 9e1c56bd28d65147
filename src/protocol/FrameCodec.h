#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>
#include <boost/json/stream_parser.hpp>

namespace zovk {

/// One message between the game and its helper: an object with a text member "type".
using HelperMessage = boost::json::object;

inline constexpr std::uint32_t kMaximumFrameLength = 64U * 1024 * 1024;
/// How deep arrays and objects may lie in one another in a value of a page.
inline constexpr std::size_t kMaximumValueDepth = 512;
/// The same for a message, which is an object around the value.
inline constexpr std::size_t kMaximumMessageDepth = kMaximumValueDepth + 1;
inline constexpr int kHelperProtocolVersion = 1;
/// The descriptor on which the helper finds its end of the socket pair.
inline constexpr int kHelperDescriptor = 3;

/// Text of a frame: four bytes of length, least significant first, then the JSON. Any thread.
/// Absent when the message does not fit into a frame.
std::optional<std::string> encodeFrame(const HelperMessage& message);

/// Cuts a stream of bytes into messages. What is fed is parsed by the next `next`, so whoever feeds
/// a long frame in small pieces never waits for all of it at once. One thread at a time. Once
/// `failed`, the stream is of no use any more: nothing comes out of it, and the connection should
/// be closed.
class FrameDecoder {
 public:
  void feed(std::string_view bytes);
  /// The next whole message; absent when more bytes are needed or the stream is broken.
  std::optional<HelperMessage> next();
  /// How many bytes are missing until the end of what is being read, which is a length or the
  /// content of a frame. To be asked after `next` gave nothing.
  std::size_t missing() const;
  bool failed() const { return !error_.empty(); }
  /// What was wrong with the stream; empty while all is well.
  const std::string& error() const { return error_; }

 private:
  /// Whether a whole length was there, and one that may be.
  bool beginFrame();
  /// Parses what is there of the frame.
  void readContent();
  std::string_view unread() const { return std::string_view(buffer_).substr(consumed_); }

  std::string buffer_;
  std::size_t consumed_ = 0;
  std::unique_ptr<boost::json::stream_parser> parser_;  // while a frame is being read
  std::size_t contentLeft_ = 0;
  std::string error_;
};

}  // namespace zovk
