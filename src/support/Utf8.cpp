#include "support/Utf8.h"

#include <cstddef>
#include <functional>
#include <numeric>

#include <boost/locale/utf.hpp>

namespace zovk {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// Returns the length of the characters that `text` begins with, up to the first byte that belongs
/// to no character.
std::size_t validPrefix(std::string_view text) {
  namespace utf = boost::locale::utf;
  const char* position = text.data();
  const char* const end = position + text.size();
  while (position != end) {
    const char* next = position;
    if (!utf::is_valid_codepoint(utf::utf_traits<char>::decode(next, end))) break;
    position = next;
  }
  return static_cast<std::size_t>(position - text.data());
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  // Most texts are ASCII, which one look at all high bits tells.
  const char bits = std::reduce(bytes.begin(), bytes.end(), '\0', std::bit_or<char>());
  if (static_cast<signed char>(bits) >= 0) return true;
  return validPrefix(bytes) == bytes.size();
}

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
