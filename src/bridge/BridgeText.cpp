#include "bridge/BridgeText.h"

#include <array>
#include <charconv>
#include <cmath>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "support/Utf8.h"

namespace zovk {
namespace {

// Writes a value by hand only where the library has no choice of form: it writes 1.5 as 1.5E0, and
// knows no indented lines.
class JsonWriter {
 public:
  explicit JsonWriter(bool pretty) : pretty_(pretty) {}

  /// False when the value cannot be written.
  bool write(const boost::json::value& value) {
    if (const auto* number = value.if_double()) return writeNumber(*number);
    if (const auto* object = value.if_object()) {
      return writeList('{', *object, '}', [this](const auto& member) { return write(member); });
    }
    if (const auto* array = value.if_array()) {
      return writeList('[', *array, ']', [this](const auto& element) { return write(element); });
    }
    text_ += boost::json::serialize(value);
    return true;
  }

  std::string& text() { return text_; }

 private:
  bool write(const boost::json::key_value_pair& member) {
    text_ += boost::json::serialize(boost::json::string_view(member.key()));
    text_ += pretty_ ? " : " : ":";
    return write(member.value());
  }

  bool writeNumber(double number) {
    if (!std::isfinite(number)) return false;
    std::array<char, 32> digits{};  // the longest shortest form has 24
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text_.append(digits.data(), end);
    return true;
  }

  template <class List, class WriteElement>
  bool writeList(char open, const List& list, char close, WriteElement writeElement) {
    if (depth_ == kDeepestMessage) return false;
    ++depth_;
    text_ += open;
    bool first = true;
    for (const auto& element : list) {
      if (!first) text_ += ',';
      first = false;
      startLine();
      if (!writeElement(element)) return false;
    }
    --depth_;
    if (!first) startLine();
    text_ += close;
    return true;
  }

  void startLine() {
    if (pretty_) text_.append(1, '\n').append(2 * depth_, ' ');
  }

  const bool pretty_;
  std::size_t depth_ = 0;
  std::string text_;
};

constexpr std::string_view kLineSeparator = "\xE2\x80\xA8";
constexpr std::string_view kParagraphSeparator = "\xE2\x80\xA9";

// What stands for one character that may not stand in a literal; empty for all others.
std::string_view escapeOf(char character) {
  switch (character) {
    case '\\':
      return "\\\\";
    case '"':
      return "\\\"";
    case '\'':
      return "\\'";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\f':
      return "\\f";
    default:
      return {};
  }
}

}  // namespace

std::optional<std::string> jsonText(const boost::json::value& value, bool pretty) {
  JsonWriter writer(pretty);
  if (!writer.write(value) || !isUtf8(writer.text())) return std::nullopt;
  return std::move(writer.text());
}

std::optional<boost::json::value> jsonValue(std::string_view text) {
  boost::json::parse_options options;
  options.max_depth = kDeepestMessage;
  boost::json::error_code error;
  boost::json::value value =
      boost::json::parse(boost::json::string_view(text.data(), text.size()), error, {}, options);
  if (error) return std::nullopt;
  return value;
}

std::string escapedForScript(std::string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 4);
  while (!text.empty()) {
    std::size_t length = 1;
    std::string_view escape = escapeOf(text.front());
    if (text.starts_with(kLineSeparator) || text.starts_with(kParagraphSeparator)) {
      length = kLineSeparator.size();
      escape = text.starts_with(kLineSeparator) ? "\\u2028" : "\\u2029";
    }
    result += escape.empty() ? text.substr(0, 1) : escape;
    text.remove_prefix(length);
  }
  return result;
}

std::size_t endOfCharacters(std::string_view text, std::size_t count) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool startsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
    if (startsCharacter && count-- == 0) return i;
  }
  return text.size();
}

std::string_view jsonKind(const boost::json::value& value) {
  if (value.is_number()) return "number";
  if (value.is_bool()) return "boolean";
  const auto kind = boost::json::to_string(value.kind());
  return {kind.data(), kind.size()};
}

}  // namespace zovk
