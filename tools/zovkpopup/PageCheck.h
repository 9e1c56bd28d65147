#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// A page file that is larger gets an error.
inline constexpr std::size_t kLargestPage = 64U * 1024U * 1024U;

struct PageProblem {
  Severity severity = Severity::kWarning;
  std::string message;
};

/// Returns the problems of a page file as a popup: what it lacks, what it cannot load, and whether
/// it is too large. Does not run its scripts.
std::vector<PageProblem> pageProblems(const std::string& page);

}  // namespace zovk::tool
