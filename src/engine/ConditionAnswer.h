#pragma once

#include <optional>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// What a condition's answer says: absent when the popup is not wanted, else the extra parameters
/// for its page, which may be none.
std::optional<boost::json::object> wantedPopupExtra(const boost::json::value& answer);

}  // namespace zovk
