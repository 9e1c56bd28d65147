#pragma once

#include <cstdint>

#include <boost/json/value.hpp>

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Whether the document has the members that the parser wants, of the kinds that it wants.
void checkShape(const boost::json::value& document, std::uint64_t configType, Problems& problems);

}  // namespace zovk::tool
