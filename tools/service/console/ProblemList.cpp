#include "service/console/ProblemList.h"

#include <algorithm>

#include <boost/json/object.hpp>

namespace zovk::service {
namespace {

const char* wordOf(tool::Severity severity) {
  if (severity == tool::Severity::kError) return "error";
  return severity == tool::Severity::kWarning ? "warning" : "hint";
}

}  // namespace

boost::json::array listOf(const std::vector<tool::Problem>& problems) {
  boost::json::array list;
  for (const tool::Problem& problem : problems) {
    list.push_back(boost::json::object{{"severity", wordOf(problem.severity)},
                                       {"path", problem.path},
                                       {"message", problem.message}});
  }
  return list;
}

bool hasErrors(const std::vector<tool::Problem>& problems) {
  return std::any_of(problems.begin(), problems.end(), [](const tool::Problem& problem) {
    return problem.severity == tool::Severity::kError;
  });
}

}  // namespace zovk::service
