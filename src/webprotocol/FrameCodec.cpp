#include "webprotocol/FrameCodec.h"

#include <array>
#include <utility>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

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

/// The message in `text`, or what is wrong with it.
std::optional<WebHostMessage> parseMessage(std::string_view text, std::string& error) {
  boost::json::parse_options options;
  options.max_depth = kMaximumMessageDepth;
  boost::json::error_code failure;
  boost::json::value value = boost::json::parse({text.data(), text.size()}, failure, {}, options);
  if (failure) {
    error = "frame is not JSON: " + failure.message();
    return std::nullopt;
  }
  boost::json::object* message = value.if_object();
  const boost::json::value* type = message == nullptr ? nullptr : message->if_contains("type");
  if (type == nullptr || !type->is_string()) {
    error = message == nullptr ? "frame is not an object" : "message without a type";
    return std::nullopt;
  }
  return std::move(*message);
}

}  // namespace

std::optional<std::string> encodeFrame(const WebHostMessage& message) {
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

std::optional<WebHostMessage> FrameDecoder::next() {
  if (failed()) return std::nullopt;
  const std::string_view rest = std::string_view(buffer_).substr(consumed_);
  if (rest.size() < kHeaderLength) return std::nullopt;
  const std::uint32_t length = readLength(rest);
  error_ = lengthError(length);
  if (failed() || rest.size() - kHeaderLength < length) return std::nullopt;
  consumed_ += kHeaderLength + length;
  return parseMessage(rest.substr(kHeaderLength, length), error_);
}

}  // namespace zovk
