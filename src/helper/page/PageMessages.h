#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

namespace zovk::helper {

/// The longest message of a page: bytes of a text, or of the JSON text of another value.
inline constexpr std::size_t kMaximumPageText = std::size_t{1024} * 1024;
/// The most values in one value of a page: elements, members, and the value itself.
inline constexpr std::size_t kMaximumPageValues = 10'000;
/// The most messages that all frames of a page may post within a second; the rest is dropped.
inline constexpr int kPageMessagesPerSecond = 1'000;
inline constexpr std::size_t kPageTextPerSecond = 8 * kMaximumPageText;

/// A value that came from a page.
struct ScriptValue {
  /// Absent if the script's value is undefined, a function, or cannot be written as JSON.
  std::optional<boost::json::value> value;
  /// Why an existing value could not be taken; empty otherwise.
  std::string error;
};

/// Reads a value from its JSON text in the web engine's form, which may be `longest` bytes long.
ScriptValue readScriptText(std::string_view json, std::size_t longest);

/// A message from the guard of a page's messages.
struct PageMessage {
  /// The page's handler that it is for, counted from 0.
  std::size_t handler = 0;
  ScriptValue body;
  /// The number of dropped messages before this one; if not 0, there is no message.
  std::size_t dropped = 0;
};

/// Parses the guard's posts: a kind, a number, a blank and a text. The kinds are t for a text, j
/// for JSON, u for nothing, x for the reason why there is no message, and d for the number of
/// dropped ones.
PageMessage readPageMessage(std::string_view posted);

}  // namespace zovk::helper
