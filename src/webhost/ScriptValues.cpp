#include "webhost/ScriptValues.h"

#include <string_view>
#include <utility>

#include <boost/json/parse.hpp>

#include "webhost/GObjectPtr.h"
#include "webprotocol/FrameCodec.h"

namespace zovk {
namespace {

/// Levels that the message around a value takes.
constexpr std::size_t kMessageLevels = 2;

bool isLoneSurrogate(std::string_view escape) {
  const auto is = [&escape](std::size_t at, std::string_view signs) {
    return signs.find(escape[at]) != std::string_view::npos;
  };
  return escape.size() == 6 && is(1, "u") && is(2, "dD") && is(3, "89abcdefABCDEF");
}

/// The engine writes half a surrogate pair, which is no character, as an escape; a whole pair it
/// writes as the character. Nobody else takes the former.
std::string withoutLoneSurrogates(std::string text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '\\') continue;
    if (isLoneSurrogate(std::string_view(text).substr(i, 6))) text.replace(i, 6, "\\ufffd");
    ++i;  // steps over the escaped sign
  }
  return text;
}

}  // namespace

ScriptValue readScriptValue(JSCValue* value) {
  const GText text(value == nullptr ? nullptr : jsc_value_to_json(value, 0));
  if (value != nullptr) jsc_context_clear_exception(jsc_value_get_context(value));
  if (!text) return {};
  boost::json::parse_options options;
  options.max_depth = kMaximumMessageDepth - kMessageLevels;
  boost::json::error_code error;
  boost::json::value parsed =
      boost::json::parse(withoutLoneSurrogates(text.get()), error, {}, options);
  if (error) return {std::nullopt, error.message()};
  return {std::move(parsed), {}};
}

}  // namespace zovk
