#pragma once

#include <string>
#include <vector>

#include "zovkpopup/Problems.h"

namespace zovk::tool {

struct PageProblem {
  Severity severity = Severity::kWarning;
  std::string message;
};

/// What is wrong with a page file as a popup: what it lacks, what it cannot load, and whether it is
/// too large. Its scripts are not run.
std::vector<PageProblem> pageProblems(const std::string& page);

}  // namespace zovk::tool
