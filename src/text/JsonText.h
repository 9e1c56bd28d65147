#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/parse_options.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// The texts that the bridge makes of messages. Any thread; no state; nothing throws.

/// How deep arrays and objects of a message may lie in one another.
inline constexpr std::size_t kDeepestMessage = 512;

/// JSON text of a value, compact or in indented lines. Absent when JSON cannot hold it: a number
/// without end, text that is not UTF-8, or too deep a nesting.
std::optional<std::string> jsonText(const boost::json::value& value, bool pretty);

/// Compact JSON text of a value for people, cut as `shortText` does. A long value costs no more
/// than what is shown of it. Absent as above.
std::optional<std::string> shortJsonText(const boost::json::value& value, std::size_t longest);

/// The text, or what of it fits into `longest` bytes, with " [...]" behind it.
std::string shortText(std::string_view text, std::size_t longest);

/// How messages are parsed.
boost::json::parse_options messageOptions();

/// The value of a JSON text, of whatever kind; absent when it does not parse.
std::optional<boost::json::value> jsonValue(std::string_view text);

/// The text as it stands between the single quotes of a script's string literal.
std::string escapedForScript(std::string_view text);

/// Where the first `count` characters of a UTF-8 text end; the text's size when it has no more.
std::size_t endOfCharacters(std::string_view text, std::size_t count);

/// What kind of JSON a value is, for people.
std::string_view jsonKind(const boost::json::value& value);

}  // namespace zovk
