#include "text/JsonText.h"

#include <array>
#include <charconv>
#include <cmath>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "support/Utf8.h"

namespace zovk {
namespace {

// Returns the beginning of a text, at most `longest` bytes long, that ends with a whole character.
std::string_view shortPart(std::string_view text, std::size_t longest) {
  if (text.size() <= longest) return text;
  while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0U) == 0x80U) --longest;
  return text.substr(0, longest);
}

// Writes a value by hand only where the library has no choice of form: it writes 1.5 as 1.5E0, and
// knows no indented lines.
class JsonWriter {
 public:
  explicit JsonWriter(bool pretty, std::size_t longest = std::string::npos)
      : pretty_(pretty), longest_(longest) {}

  /// Returns false if the value cannot be written, or if enough was written.
  bool write(const boost::json::value& value) {
    if (isEnough()) return false;
    if (const auto* number = value.if_double()) return writeNumber(*number);
    if (const auto* object = value.if_object()) {
      return writeList('{', *object, '}', [this](const auto& member) { return write(member); });
    }
    if (const auto* array = value.if_array()) {
      return writeList('[', *array, ']', [this](const auto& element) { return write(element); });
    }
    if (const auto* text = value.if_string()) {
      writeText(*text);
    } else {
      text_ += boost::json::serialize(value);
    }
    return true;
  }

  std::string& text() { return text_; }
  bool isEnough() const { return text_.size() > longest_; }

 private:
  bool write(const boost::json::key_value_pair& member) {
    writeText(member.key());
    text_ += pretty_ ? " : " : ":";
    return write(member.value());
  }

  // Reads no more of a long text than may be written.
  void writeText(std::string_view text) {
    text_ += boost::json::serialize(boost::json::string_view(shortPart(text, longest_)));
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
  const std::size_t longest_;
  std::size_t depth_ = 0;
  std::string text_;
};

constexpr std::string_view kMore = " [...]";

constexpr std::string_view kLineSeparator = "\xE2\x80\xA8";
constexpr std::string_view kParagraphSeparator = "\xE2\x80\xA9";

// Returns the escape of a character that a literal may not contain; empty for all others.
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

std::optional<std::string> shortJsonText(const boost::json::value& value, std::size_t longest) {
  JsonWriter writer(false, longest);
  const bool isWhole = writer.write(value);
  if (!isWhole && !writer.isEnough()) return std::nullopt;
  if (!isUtf8(writer.text())) return std::nullopt;
  return shortText(writer.text(), longest);
}

std::string shortText(std::string_view text, std::size_t longest) {
  const std::string_view part = shortPart(text, longest);
  return part.size() == text.size() ? std::string(text) : std::string(part) + std::string(kMore);
}

boost::json::parse_options messageOptions() {
  boost::json::parse_options options;
  options.max_depth = kDeepestMessage;
  return options;
}

std::optional<boost::json::value> jsonValue(std::string_view text) {
  boost::json::error_code error;
  boost::json::value value = boost::json::parse(boost::json::string_view(text.data(), text.size()),
                                                error, {}, messageOptions());
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
