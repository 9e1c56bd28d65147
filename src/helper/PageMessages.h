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
/// What all frames of a page may post within a second; the rest is left out.
inline constexpr int kPageMessagesPerSecond = 1'000;
inline constexpr std::size_t kPageTextPerSecond = 8 * kMaximumPageText;

/// A value that came out of a page.
struct ScriptValue {
  /// Absent when the script's value is undefined, a function, or cannot be written as JSON.
  std::optional<boost::json::value> value;
  /// Why a value that is there could not be taken; empty otherwise.
  std::string error;
};

/// A value by its JSON text as the engine writes it, which may be `longest` bytes long.
ScriptValue readScriptText(std::string_view json, std::size_t longest);

/// What the guard of a page's messages hands on.
struct PageMessage {
  /// Which of the page's handlers it is for, counted from 0.
  std::size_t handler = 0;
  ScriptValue body;
  /// So many messages were left out before this; then there is no message.
  std::size_t dropped = 0;
};

/// Takes apart what the guard posts: a kind, a number, a blank and a text. The kinds are t for a
/// text, j for JSON, u for nothing, x for why there is no message, d for how many were left out.
PageMessage readPageMessage(std::string_view posted);

}  // namespace zovk::helper
