#pragma once

#include <optional>

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

namespace zovk {

/// Returns nothing if the answer does not want the popup. Otherwise returns the extra parameters
/// for its page, of which there may be none.
std::optional<boost::json::object> wantedPopupExtra(const boost::json::value& answer);

}  // namespace zovk
