#pragma once

#include <vector>

#include <boost/json/array.hpp>

#include "zovkpopup/Problems.h"

namespace zovk::service {

/// Returns the problems as the console's page reads them.
boost::json::array listOf(const std::vector<tool::Problem>& problems);

bool hasErrors(const std::vector<tool::Problem>& problems);

}  // namespace zovk::service
