#pragma once

#include <cstddef>
#include <string_view>

#include <boost/json/error.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// How deep arrays and objects may lie in one another, in whatever comes from outside.
inline constexpr std::size_t kDeepestJson = 512;

/// The value of a JSON text; null, with an `error`, when it does not parse or lies too deep. Any
/// thread.
boost::json::value readJson(std::string_view text, boost::json::error_code& error);

/// The text without a byte-order mark at its start, which some editors and services put there. Any
/// thread.
std::string_view withoutByteOrderMark(std::string_view text);

}  // namespace zovk
