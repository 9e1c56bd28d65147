#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/parse_options.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// The texts that the bridge makes of messages. Any thread; no state; nothing throws.

/// The deepest nesting of arrays and objects in a message.
inline constexpr std::size_t kDeepestMessage = 512;

/// Returns the JSON text of a value, compact or in indented lines. Returns nothing if JSON cannot
/// hold the value: an infinite number, text that is not UTF-8, or too deep a nesting.
std::optional<std::string> jsonText(const boost::json::value& value, bool pretty);

/// Returns compact JSON text of a value for people, cut off as `shortText` does. A long value costs
/// no more than the part that is shown. Returns nothing in the cases above.
std::optional<std::string> shortJsonText(const boost::json::value& value, std::size_t longest);

/// Returns the text, or the part that fits into `longest` bytes, followed by " [...]".
std::string shortText(std::string_view text, std::size_t longest);

/// Returns the options for parsing messages.
boost::json::parse_options messageOptions();

/// Returns the value of a JSON text, of any kind; nothing if it does not parse.
std::optional<boost::json::value> jsonValue(std::string_view text);

/// Returns the text in the form that it has between the single quotes of a script's string literal.
std::string escapedForScript(std::string_view text);

/// Returns where the first `count` characters of a UTF-8 text end; the text's size if it has no
/// more.
std::size_t endOfCharacters(std::string_view text, std::size_t count);

/// Returns the name of a value's JSON kind, for people.
std::string_view jsonKind(const boost::json::value& value);

}  // namespace zovk
