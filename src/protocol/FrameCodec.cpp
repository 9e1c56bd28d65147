#include "protocol/FrameCodec.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

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
  if (failed() || (!isInFrame() && !beginFrame())) return std::nullopt;
  readContent();
  if (failed() || contentLeft_ > 0 || !parser_) return std::nullopt;
  auto message = parser_->finish();
  error_ = parser_->error();
  parser_.reset();  // it would keep the memory of the longest frame
  return message;
}

std::optional<MappedBytes> FrameDecoder::takeText() {
  if (contentLeft_ > 0) return std::nullopt;
  return std::exchange(text_, std::nullopt);
}

bool FrameDecoder::beginFrame() {
  if (unread().size() < kHeaderLength) return false;
  const std::uint32_t length = readLength(unread());
  error_ = lengthError(length);
  if (failed()) return false;
  consumed_ += kHeaderLength;
  contentLeft_ = length;
  beginContent();
  return !failed();
}

void FrameDecoder::beginContent() {
  if (contentLeft_ <= longestParsed_) {
    parser_.emplace();
    return;
  }
  try {
    text_.emplace(contentLeft_);
  } catch (const std::bad_alloc&) {
    error_ = "no memory for a frame";
  }
}

void FrameDecoder::readContent() {
  const std::string_view part = unread().substr(0, contentLeft_);
  if (part.empty()) return;
  if (parser_ && !parser_->write(part)) error_ = parser_->error();
  if (text_) std::memcpy(text_->data() + (text_->size() - contentLeft_), part.data(), part.size());
  consumed_ += part.size();
  contentLeft_ -= part.size();
}

std::size_t FrameDecoder::missing() const {
  return isInFrame() ? contentLeft_ : kHeaderLength - std::min(kHeaderLength, unread().size());
}

}  // namespace zovk
