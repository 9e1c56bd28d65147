#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// The system's small conversions. Any thread; no state. Nothing throws: input that cannot be
/// converted gives an absent value or an empty text. Exchanging methods at run time has no
/// counterpart in C++ and is left out.
class ZOVKPopupCommonTool {
 public:
  /// Returns the JSON bytes of a dictionary without any blank or line end, even inside its values:
  /// a request's signature covers exactly the bytes that are sent. Returns nothing for an absent or
  /// empty dictionary and, with an error line, for one that JSON cannot hold.
  static std::optional<std::string> dictionaryToData(
      const std::optional<boost::json::object>& dictionary);
  /// Returns the same as text; empty if there is nothing to convert.
  static std::string dictionaryToJsonString(const std::optional<boost::json::object>& dictionary);
  /// Returns the parsed JSON, of any type; nothing, with an error line, if it does not parse.
  static std::optional<boost::json::value> jsonStringToDictionary(
      const std::optional<std::string>& jsonString);
  /// Returns the digest of the text up to its first zero byte, as 32 lower-case hexadecimal digits;
  /// empty for no text.
  static std::string getTextMD5(std::string_view text);
  /// Returns the part after the first "?" as decoded keys and values. If there is a fragment, it is
  /// read instead of the query.
  static boost::json::object urlParamToDictionary(std::string_view url);
  /// Returns key=value pairs joined by "&", with numbers as `numberText` writes them. "&", "=", "?"
  /// and "/" of a value are not encoded, and keys are never encoded.
  static std::string dictionaryToUrlParam(const boost::json::object& dictionary, bool needEncode);
};

}  // namespace zovk
