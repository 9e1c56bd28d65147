#pragma once

#include <cstddef>
#include <string_view>

#include <boost/json/error.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// The deepest nesting of arrays and objects in any JSON from outside.
inline constexpr std::size_t kDeepestJson = 512;

/// Returns the value of a JSON text; null, with an `error`, if it does not parse or is nested too
/// deep. Any thread.
boost::json::value readJson(std::string_view text, boost::json::error_code& error);

/// Returns the text without a byte-order mark at its start, which some editors and services write.
/// Any thread.
std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace zovk
