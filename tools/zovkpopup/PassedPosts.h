#pragma once

#include <optional>
#include <string>

#include <boost/json/value.hpp>

namespace zovk::tool {

/// Returns why the game ignores a page's post to a handler, and what to post instead, or which part
/// of an answer does not arrive. Empty if all of it does.
std::string remarkOn(const std::string& handler, const std::optional<boost::json::value>& body);

}  // namespace zovk::tool
