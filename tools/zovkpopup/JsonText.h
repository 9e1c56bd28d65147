#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <boost/json/value.hpp>

namespace zovk::tool {

/// A JSON text, or the place where it stops being one. Lines and columns count from 1, columns in
/// bytes.
struct JsonText {
  boost::json::value value;
  std::string error;  ///< Empty if it is JSON.
  std::size_t line = 0;
  std::size_t column = 0;
};

JsonText parseJson(std::string_view text);

/// Returns JSON with one member a line, for people to edit; ends with a line end.
std::string prettyJson(const boost::json::value& value);

}  // namespace zovk::tool
