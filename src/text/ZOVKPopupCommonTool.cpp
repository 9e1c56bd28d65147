#include "text/ZOVKPopupCommonTool.h"

#include <algorithm>
#include <cmath>

#include <boost/json/serialize.hpp>

#include "logging/ZPLogger.h"
#include "support/Utf8.h"
#include "text/JsonNumbers.h"
#include "text/JsonRead.h"
#include "text/Md5.h"
#include "text/UrlText.h"

namespace zovk {
namespace {

// Stores one piece of a query. Pieces that do not decode, or have no key, are passed over.
void storePair(std::string_view piece, boost::json::object& pairs) {
  const std::string_view keyText = piece.substr(0, piece.find('='));
  const std::size_t lastSign = piece.rfind('=');
  const std::string_view valueText =
      lastSign == std::string_view::npos ? piece : piece.substr(lastSign + 1);
  const auto key = withoutPercentEncoding(keyText);
  const auto value = withoutPercentEncoding(valueText);
  if (key && !key->empty() && value) pairs[*key] = *value;
}

// Returns whether the written value can be read again, as far as numbers and depth go.
bool isWritable(const boost::json::value& value, std::size_t depth);

bool isWritable(const boost::json::object& object, std::size_t depth) {
  return depth > 0 && std::all_of(object.begin(), object.end(), [depth](const auto& member) {
           return isWritable(member.value(), depth - 1);
         });
}

bool isWritable(const boost::json::array& array, std::size_t depth) {
  return depth > 0 && std::all_of(array.begin(), array.end(), [depth](const auto& element) {
           return isWritable(element, depth - 1);
         });
}

bool isWritable(const boost::json::value& value, std::size_t depth) {
  if (const auto* number = value.if_double()) return std::isfinite(*number);
  if (const auto* object = value.if_object()) return isWritable(*object, depth);
  const auto* array = value.if_array();
  return array == nullptr || isWritable(*array, depth);
}

// Returns why a text that was written as JSON is not JSON: it holds an infinite number, or is not
// UTF-8.
boost::json::error_code faultOf(const std::string& text) {
  boost::json::error_code error;
  readJson(text, error);
  return error;
}

std::string textOf(const boost::json::value& value) {
  if (const auto* text = value.if_string()) return std::string(*text);
  if (const bool* flag = value.if_bool()) return *flag ? "1" : "0";
  if (const double* number = value.if_double()) return numberText(*number);
  return boost::json::serialize(value);
}

}  // namespace

std::optional<std::string> ZOVKPopupCommonTool::dictionaryToData(
    const std::optional<boost::json::object>& dictionary) {
  if (!dictionary || dictionary->empty()) return std::nullopt;
  std::string text = boost::json::serialize(*dictionary);
  if (!isUtf8(text) || !isWritable(*dictionary, kDeepestJson)) {
    logError("Dict to NSData error:%@", faultOf(text).message());
    return std::nullopt;
  }
  for (const char blank : {' ', '\n', '\r'}) {
    if (text.find(blank) != std::string::npos) std::erase(text, blank);
  }
  return text;
}

std::string ZOVKPopupCommonTool::dictionaryToJsonString(
    const std::optional<boost::json::object>& dictionary) {
  return dictionaryToData(dictionary).value_or("");
}

std::optional<boost::json::value> ZOVKPopupCommonTool::jsonStringToDictionary(
    const std::optional<std::string>& jsonString) {
  constexpr DebugLog debug{"ZOVKPopupCommonTool", "ZOVKPopupCommonTool::jsonStringToDictionary"};
  if (!jsonString) {
    debug("jsonString nil to dictionary");
    return std::nullopt;
  }
  boost::json::error_code error;
  boost::json::value parsed = readJson(*jsonString, error);
  if (error) {
    logError("jsonStringToDictionary parse failed: %@", error.message());
    return std::nullopt;
  }
  return parsed;
}

std::string ZOVKPopupCommonTool::getTextMD5(std::string_view text) {
  if (text.empty()) return "";
  return md5Hex(text.substr(0, text.find('\0')));
}

boost::json::object ZOVKPopupCommonTool::urlParamToDictionary(std::string_view url) {
  boost::json::object pairs;
  const std::size_t question = url.find('?');
  if (question == std::string_view::npos) return pairs;
  std::string_view kept = url.substr(question + 1);
  // The fragment is kept and the query dropped: page addresses carry their parameters there.
  if (const std::size_t fragment = kept.find('#'); fragment != std::string_view::npos) {
    kept.remove_prefix(fragment);
  }
  while (true) {
    const std::size_t end = kept.find('&');
    storePair(kept.substr(0, end), pairs);
    if (end == std::string_view::npos) return pairs;
    kept.remove_prefix(end + 1);
  }
}

std::string ZOVKPopupCommonTool::dictionaryToUrlParam(const boost::json::object& dictionary,
                                                      bool needEncode) {
  std::string query;
  for (const auto& [key, value] : dictionary) {
    const std::string text = textOf(value);
    if (!query.empty()) query += '&';
    query.append(key).append("=").append(needEncode ? withQueryEncoding(text) : text);
  }
  return query;
}

}  // namespace zovk
