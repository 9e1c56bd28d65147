#pragma once

#include <cstdint>

#include <boost/json/value.hpp>

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Checks that the document has the members that the parser needs, of the right kinds.
void checkShape(const boost::json::value& document, std::uint64_t configType, Problems& problems);

}  // namespace zovk::tool
