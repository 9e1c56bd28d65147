#pragma once

#include <optional>
#include <string>

#include <boost/json/value.hpp>

namespace zovk::tool {

/// Why the game takes no answer from what a page posted to a handler, and what to post instead, or
/// what of an answer does not arrive. Empty when all of it does.
std::string remarkOn(const std::string& handler, const std::optional<boost::json::value>& body);

}  // namespace zovk::tool
