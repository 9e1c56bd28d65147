#include "zovkpopup/NoJson.h"

#include <algorithm>

#include "support/Utf8.h"
#include "text/JsonRead.h"

namespace zovk::tool {
namespace {

// Returns the line at which the text is no longer JSON, and a line with a sign below the place.
std::string marked(std::string_view text, const JsonText& json) {
  constexpr std::size_t kWidth = 100;
  std::size_t start = 0;
  for (std::size_t line = 1; line < json.line; ++line) {
    const std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) return "";
    start = end + 1;
  }
  std::string_view line = text.substr(start, text.find('\n', start) - start);
  std::size_t column = std::min(json.column - 1, line.size());
  if (column > kWidth / 2) {
    line.remove_prefix(column - kWidth / 2);
    column = kWidth / 2;
  }
  std::string shown(line.substr(0, kWidth));
  for (char& c : shown) c = static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  return "\n  " + repairedUtf8(std::move(shown)) + "\n  " + std::string(column, ' ') + "^";
}

bool isAt(std::string_view text, std::size_t at, std::string_view what) {
  return at < text.size() && text.substr(at).starts_with(what);
}

std::string_view causeOf(std::string_view text, std::size_t at) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return "It is empty.";
  if (text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff") ||
      text.substr(0, 4).find('\0') != std::string_view::npos) {
    return "It is UTF-16; save it as UTF-8.";
  }
  if (text[first] == '<') return "It is an HTML file, perhaps the page or a server's error.";
  // The parser may stop within a sign of several bytes or at its first.
  const std::string_view near = text.substr(at >= 2 ? at - 2 : 0, 5);
  for (const std::string_view quote :
       {"\xe2\x80\x9c", "\xe2\x80\x9d", "\xe2\x80\x98", "\xe2\x80\x99"}) {
    if (near.find(quote) != std::string_view::npos) {
      return "There are curly quotes; write \" instead.";
    }
  }
  if (isAt(text, at, "/") || isAt(text, at, "#")) return "JSON has no comments.";
  if (isAt(text, at, "'")) return "Texts stand in double quotes.";
  if (isAt(text, at, "}") || isAt(text, at, "]")) {
    const std::size_t before = text.find_last_not_of(" \t\r\n", at == 0 ? 0 : at - 1);
    if (before != std::string_view::npos && text[before] == ',') {
      return "There is a comma after the last one.";
    }
  }
  return "";
}

std::size_t offsetOf(std::string_view text, const JsonText& json) {
  std::size_t start = 0;
  for (std::size_t line = 1; line < json.line; ++line) {
    start = std::min(text.find('\n', start), text.size() - 1) + 1;
  }
  return std::min(start + json.column - 1, text.size());
}

}  // namespace

std::string whyNoJson(std::string_view text, const JsonText& json) {
  text = withoutByteOrderMark(text);  // lines and columns begin behind it
  std::string result = "is no JSON: " + json.error;
  const std::string_view cause = causeOf(text, offsetOf(text, json));
  if (!cause.empty()) result += ". " + std::string(cause);
  return result + marked(text, json);
}

}  // namespace zovk::tool
