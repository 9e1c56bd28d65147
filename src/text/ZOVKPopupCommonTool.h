#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// The system's small conversions. Any thread; no state. Nothing throws: what cannot be converted
/// gives an absent value or an empty text. Exchanging methods at run time has no counterpart in
/// C++ and is left out.
class ZOVKPopupCommonTool {
 public:
  /// JSON bytes of a dictionary without a single blank or line end, also inside its values: the
  /// signature of a request covers exactly the bytes that are sent. Absent for an absent or empty
  /// dictionary, and, with an error line, for one that JSON cannot hold.
  static std::optional<std::string> dictionaryToData(
      const std::optional<boost::json::object>& dictionary);
  /// The same as text; empty when there is nothing to convert.
  static std::string dictionaryToJsonString(const std::optional<boost::json::object>& dictionary);
  /// The parsed JSON, of whatever type it is; absent, with an error line, when it does not parse.
  static std::optional<boost::json::value> jsonStringToDictionary(
      const std::optional<std::string>& jsonString);
  /// 32 lower-case hexadecimal digits over the text up to its first zero byte; empty for no text.
  static std::string getTextMD5(std::string_view text);
  /// What follows the first "?" as decoded keys and values. A fragment, when there is one, takes
  /// the place of the query.
  static boost::json::object urlParamToDictionary(std::string_view url);
  /// key=value pairs joined by "&"; numbers as `numberText` writes them. Encoding leaves "&", "=",
  /// "?" and "/" of a value as they are, and keys are never encoded.
  static std::string dictionaryToUrlParam(const boost::json::object& dictionary, bool needEncode);
};

}  // namespace zovk
