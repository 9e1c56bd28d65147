#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/FrameParser.h"
#include "protocol/MappedBytes.h"

namespace zovk {

/// The game's number of a window, a view, a layout or a request.
using HelperId = std::int64_t;

inline constexpr std::uint32_t kMaximumFrameLength = 64U * 1024 * 1024;
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
  FrameDecoder() = default;
  /// Frames of more than `longestParsed` bytes are only collected, for somebody else to parse: see
  /// `takeText`.
  explicit FrameDecoder(std::size_t longestParsed) : longestParsed_(longestParsed) {}

  void feed(std::string_view bytes);
  /// Returns the next whole message. Returns nothing if more bytes are needed, the stream is
  /// broken, or the text of a long frame waits to be taken.
  std::optional<HelperMessage> next();
  /// Returns the text of a long frame once all of it is there. Call it after `next` returned
  /// nothing, and feed nothing more before it was taken.
  std::optional<MappedBytes> takeText();
  /// Returns how many bytes are missing until the end of the length or the content that is being
  /// read. Call it after `next` returned nothing.
  std::size_t missing() const;
  bool failed() const { return !error_.empty(); }
  /// Returns what is wrong with the stream; empty if nothing is.
  const std::string& error() const { return error_; }

 private:
  /// Returns whether a whole length has arrived, and is allowed.
  bool beginFrame();
  void beginContent();
  bool isInFrame() const { return parser_ || text_; }
  /// Parses or collects the bytes of the frame that have arrived.
  void readContent();
  std::string_view unread() const { return std::string_view(buffer_).substr(consumed_); }

  std::string buffer_;
  std::size_t consumed_ = 0;
  std::size_t longestParsed_ = kMaximumFrameLength;
  std::optional<FrameParser> parser_;  // while a frame is being read
  std::optional<MappedBytes> text_;    // while a long frame is being read, and until it is taken
  std::size_t contentLeft_ = 0;
  std::string error_;
};

}  // namespace zovk
