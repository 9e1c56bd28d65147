#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

namespace zovk::service {

/// A member as a number; 0 when it is none. Texts of digits count, as they do for games.
std::int64_t numberIn(const boost::json::object& object, std::string_view name);
/// A member as a text; empty when it is none.
std::string textIn(const boost::json::object& object, std::string_view name);

}  // namespace zovk::service
