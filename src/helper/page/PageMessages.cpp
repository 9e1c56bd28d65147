#include "helper/page/PageMessages.h"

#include <charconv>

#include <boost/json/parse.hpp>

#include "protocol/FrameCodec.h"
#include "text/JsonSize.h"

namespace zovk::helper {
namespace {

constexpr const char* kTooLong = "too long";
constexpr const char* kTooManyValues = "too many values";

bool isLoneSurrogate(std::string_view escape) {
  const auto is = [&escape](std::size_t at, std::string_view signs) {
    return signs.find(escape[at]) != std::string_view::npos;
  };
  return escape.size() == 6 && is(1, "u") && is(2, "dD") && is(3, "89abcdefABCDEF");
}

/// The web engine writes half a surrogate pair, which is not a character, as an escape, and a whole
/// pair as the character. Other readers do not accept the former.
std::string withoutLoneSurrogates(std::string_view json) {
  std::string text(json);
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '\\') continue;
    if (isLoneSurrogate(std::string_view(text).substr(i, 6))) text.replace(i, 6, "\\ufffd");
    ++i;  // steps over the escaped sign
  }
  return text;
}

/// Returns whether the text, read as JSON, would hold too many values.
bool holdsTooManyValues(std::string_view json) {
  JsonSize size;
  size.add(json);
  return size.values() > kMaximumPageValues;
}

ScriptValue refused(std::string why) {
  return {std::nullopt, std::move(why)};
}

/// A text may be JSON itself, which the game will parse.
ScriptValue readText(std::string_view text) {
  if (text.size() > kMaximumPageText) return refused(kTooLong);
  if (holdsTooManyValues(text)) return refused(kTooManyValues);
  return {boost::json::value(boost::json::string_view(text.data(), text.size())), {}};
}

ScriptValue readBody(char kind, std::string_view text) {
  if (kind == 't') return readText(text);
  if (kind == 'j') return readScriptText(text, kMaximumPageText);
  if (kind == 'u') return {};
  return refused(std::string(text.substr(0, std::string_view(kTooManyValues).size())));
}

}  // namespace

ScriptValue readScriptText(std::string_view json, std::size_t longest) {
  if (json.size() > longest) return refused(kTooLong);
  if (holdsTooManyValues(json)) return refused(kTooManyValues);
  boost::json::parse_options options;
  options.max_depth = kMaximumValueDepth;
  boost::json::error_code error;
  boost::json::value parsed = boost::json::parse(withoutLoneSurrogates(json), error, {}, options);
  if (error) return refused(error.message());
  return {std::move(parsed), {}};
}

PageMessage readPageMessage(std::string_view posted) {
  PageMessage message;
  const std::size_t blank = posted.find(' ');
  std::size_t number = 0;
  if (blank == std::string_view::npos || blank < 2) {
    message.body = refused("ill-formed");
    return message;
  }
  const auto [end, error] = std::from_chars(posted.data() + 1, posted.data() + blank, number);
  if (error != std::errc() || end != posted.data() + blank) {
    message.body = refused("ill-formed");
  } else if (posted.front() == 'd') {
    message.dropped = number;
  } else {
    message.handler = number;
    message.body = readBody(posted.front(), posted.substr(blank + 1));
  }
  return message;
}

}  // namespace zovk::helper
