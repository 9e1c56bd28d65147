#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include <boost/json/fwd.hpp>
#include <fmt/args.h>
#include <fmt/printf.h>

namespace zovk {

/// The values of one log line, in the form that the printf-style formatter takes.
using LogValues = fmt::dynamic_format_arg_store<fmt::printf_context>;

/// Returns the text of a value for "%@".
std::string logText(const boost::json::value& value);
std::string logText(const boost::json::object& value);

/// Expands `format` with `values`. "%@" takes an object's text. A format that does not fit its
/// values is returned unchanged: a broken log line must not become a broken game.
std::string expandLogFormat(std::string_view format, const LogValues& values);

template <class T>
concept LogObject = requires(const T& value) {
  { logText(value) } -> std::convertible_to<std::string>;
};

template <class T>
void addLogValue(LogValues& values, const T& value) {
  if constexpr (std::is_invocable_v<const T&>) {
    addLogValue(values, value());  // costly texts are handed in as functions, run only when needed
  } else if constexpr (std::same_as<T, bool>) {
    values.push_back(value ? 1 : 0);
  } else if constexpr (std::is_enum_v<T>) {
    values.push_back(static_cast<std::underlying_type_t<T>>(value));
  } else if constexpr (std::same_as<T, std::optional<std::string>>) {
    values.push_back(value ? *value : std::string("(null)"));
  } else if constexpr (std::convertible_to<const T&, std::string_view>) {
    values.push_back(std::string(std::string_view(value)));
  } else if constexpr (std::is_pointer_v<T>) {
    values.push_back(static_cast<const void*>(value));
  } else if constexpr (std::is_arithmetic_v<T>) {
    values.push_back(value);
  } else {
    values.push_back(logText(value));
  }
}

}  // namespace zovk
