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

/// The game's number of a window, a view, a layout or a request.
using HelperId = std::int64_t;

/// One message between the game and its helper: an object with a text member "type".
using HelperMessage = boost::json::object;

inline constexpr std::uint32_t kMaximumFrameLength = 64U * 1024 * 1024;
/// The deepest nesting of arrays and objects in a value of a page.
inline constexpr std::size_t kMaximumValueDepth = 512;
/// The deepest nesting in a message, which is an object around the value.
inline constexpr std::size_t kMaximumMessageDepth = kMaximumValueDepth + 1;
inline constexpr int kHelperProtocolVersion = 1;
/// The descriptor on which the helper finds its end of the socket pair.
inline constexpr int kHelperDescriptor = 3;

/// Returns the bytes of a frame: four bytes of length, least significant first, then the JSON. Any
/// thread. Returns nothing if the message does not fit into a frame.
std::optional<std::string> encodeFrame(const HelperMessage& message);

/// Splits a stream of bytes into messages. `next` parses the bytes that were fed before it, so a
/// long frame that is fed in small pieces is parsed in small pieces. One thread at a time. After
/// `failed` returns true the stream is useless: it gives no more messages, and the connection
/// should be closed.
class FrameDecoder {
 public:
  void feed(std::string_view bytes);
  /// Returns the next whole message, or nothing if more bytes are needed or the stream is broken.
  std::optional<HelperMessage> next();
  /// Returns how many bytes are missing until the end of the length or the content that is being
  /// read. Call it after `next` returned nothing.
  std::size_t missing() const;
  bool failed() const { return !error_.empty(); }
  /// Returns what is wrong with the stream; empty if nothing is.
  const std::string& error() const { return error_; }

 private:
  /// Returns whether a whole length has arrived, and is allowed.
  bool beginFrame();
  /// Parses the bytes of the frame that have arrived.
  void readContent();
  std::string_view unread() const { return std::string_view(buffer_).substr(consumed_); }

  std::string buffer_;
  std::size_t consumed_ = 0;
  std::unique_ptr<boost::json::stream_parser> parser_;  // while a frame is being read
  std::size_t contentLeft_ = 0;
  std::string error_;
};

}  // namespace zovk
