#include "webprotocol/Utf8.h"

#include <cstddef>
#include <string_view>

namespace zovk {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Lead {
  std::size_t length;       // of the whole character, 0 when it cannot begin one
  unsigned char firstLow;   // the range of the byte after it, narrower for some leads so that
  unsigned char firstHigh;  // overlong forms, surrogates and too large values are left out
};

Lead leadOf(unsigned char byte) {
  if (byte < 0x80) return {1, 0, 0};
  if (byte < 0xC2 || byte > 0xF4) return {0, 0, 0};
  if (byte < 0xE0) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte < 0xF0) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {4, 0x80, 0xBF};
}

/// Length of the character that `text` begins with; 0 when it begins with none.
std::size_t characterLength(std::string_view text) {
  const Lead lead = leadOf(static_cast<unsigned char>(text.front()));
  if (lead.length > text.size()) return 0;
  for (std::size_t i = 1; i < lead.length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const unsigned char low = i == 1 ? lead.firstLow : 0x80;
    const unsigned char high = i == 1 ? lead.firstHigh : 0xBF;
    if (byte < low || byte > high) return 0;
  }
  return lead.length;
}

std::size_t validPrefix(std::string_view text) {
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t length = characterLength(text.substr(position));
    if (length == 0) break;
    position += length;
  }
  return position;
}

}  // namespace

std::string repairedUtf8(std::string text) {
  std::string_view rest = text;
  std::size_t valid = validPrefix(rest);
  if (valid == rest.size()) return text;
  std::string result;
  while (valid < rest.size()) {
    result += rest.substr(0, valid);
    result += kReplacement;
    rest.remove_prefix(valid + 1);
    valid = validPrefix(rest);
  }
  result += rest;
  return result;
}

}  // namespace zovk
