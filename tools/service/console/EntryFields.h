#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

namespace zovk::service {

/// Returns a member as a number, or 0 if it is not one. Texts of digits count, as in games.
std::int64_t numberIn(const boost::json::object& object, std::string_view name);
/// Returns a member as a text; empty if it is not one.
std::string textIn(const boost::json::object& object, std::string_view name);

/// Returns the name of a popup for people, by its number and scene.
std::string titleOf(const boost::json::object& entry);

}  // namespace zovk::service
