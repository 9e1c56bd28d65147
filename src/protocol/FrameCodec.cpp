#include "protocol/FrameCodec.h"

#include <algorithm>
#include <utility>

#include <boost/json/serialize.hpp>

#include "protocol/MessageNames.h"
#include "support/Utf8.h"

namespace zovk {
namespace {

constexpr std::size_t kHeaderLength = 4;

std::string lengthPrefix(std::uint32_t length) {
  std::string prefix;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    prefix += static_cast<char>((length >> shift) & 0xFFU);
  }
  return prefix;
}

std::uint32_t readLength(std::string_view prefix) {
  std::uint32_t length = 0;
  for (std::size_t i = kHeaderLength; i > 0; --i) {
    length = (length << 8) | static_cast<unsigned char>(prefix[i - 1]);
  }
  return length;
}

std::string_view lengthError(std::uint32_t length) {
  if (length == 0) return "empty frame";
  return length > kMaximumFrameLength ? "frame too long" : "";
}

boost::json::parse_options optionsOfMessages() {
  boost::json::parse_options options;
  options.max_depth = kMaximumMessageDepth;
  return options;
}

/// Returns the message that `value` is. Returns nothing, and sets `error`, if it is not a message.
std::optional<HelperMessage> messageOf(boost::json::value value, std::string& error) {
  boost::json::object* message = value.if_object();
  const boost::json::value* type =
      message == nullptr ? nullptr : message->if_contains(member::kType);
  if (type == nullptr || !type->is_string()) {
    error = message == nullptr ? "frame is not an object" : "message without a type";
    return std::nullopt;
  }
  return std::move(*message);
}

}  // namespace

std::optional<std::string> encodeFrame(const HelperMessage& message) {
  // The other side takes nothing but UTF-8, and one odd byte in an address must not end the
  // connection. All of JSON's own signs are ASCII, so the text can be mended as a whole.
  std::string text = repairedUtf8(boost::json::serialize(message));
  if (text.size() > kMaximumFrameLength) return std::nullopt;
  return lengthPrefix(static_cast<std::uint32_t>(text.size())) + text;
}

void FrameDecoder::feed(std::string_view bytes) {
  if (failed()) return;
  buffer_.erase(0, std::exchange(consumed_, 0));
  buffer_ += bytes;
}

std::optional<HelperMessage> FrameDecoder::next() {
  if (failed() || (!parser_ && !beginFrame())) return std::nullopt;
  readContent();
  if (failed() || contentLeft_ > 0) return std::nullopt;
  // A new parser for each frame: it would keep the memory of the longest.
  return messageOf(std::exchange(parser_, nullptr)->release(), error_);
}

bool FrameDecoder::beginFrame() {
  if (unread().size() < kHeaderLength) return false;
  const std::uint32_t length = readLength(unread());
  error_ = lengthError(length);
  if (failed()) return false;
  consumed_ += kHeaderLength;
  contentLeft_ = length;
  parser_ =
      std::make_unique<boost::json::stream_parser>(boost::json::storage_ptr(), optionsOfMessages());
  return true;
}

void FrameDecoder::readContent() {
  const std::string_view part = unread().substr(0, contentLeft_);
  consumed_ += part.size();
  contentLeft_ -= part.size();
  boost::json::error_code failure;
  parser_->write(part.data(), part.size(), failure);
  if (!failure && contentLeft_ == 0) parser_->finish(failure);
  if (failure) error_ = "frame is not JSON: " + failure.message();
}

std::size_t FrameDecoder::missing() const {
  return parser_ ? contentLeft_ : kHeaderLength - std::min(kHeaderLength, unread().size());
}

}  // namespace zovk
