#include <cstdio>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "zovkpopup/Commands.h"
#include "zovkpopup/DocumentCheck.h"
#include "zovkpopup/DocumentFix.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/ScriptCheck.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

const char* word(Severity severity) {
  if (severity == Severity::kHint) return "hint";
  return severity == Severity::kError ? "error" : "warning";
}

std::string lineOf(const std::string& file, const Problem& problem) {
  std::string place = file;
  if (problem.line > 0) place += fmt::format(":{}:{}", problem.line, problem.column);
  if (!problem.path.empty()) place += ": " + problem.path;
  return fmt::format("{}: {}: {}", place, word(problem.severity), problem.message);
}

boost::json::object jsonOf(const Problem& problem) {
  boost::json::object result{
      {"severity", word(problem.severity)}, {"path", problem.path}, {"message", problem.message}};
  if (problem.line > 0) {
    result["line"] = problem.line;
    result["column"] = problem.column;
  }
  return result;
}

std::string counted(std::size_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

void printForPeople(const std::string& file, const Problems& problems) {
  for (const Problem& problem : problems.list()) std::puts(lineOf(file, problem).c_str());
  std::puts(fmt::format("{}: {}, {}", file, counted(problems.count(Severity::kError), "error"),
                        counted(problems.count(Severity::kWarning), "warning"))
                .c_str());
}

void printForScripts(const std::string& file, const Problems& problems, bool good,
                     const std::vector<std::string>& fixed) {
  boost::json::array list;
  for (const Problem& problem : problems.list()) list.push_back(jsonOf(problem));
  const boost::json::object result{{"document", file},
                                   {"ok", good},
                                   {"errors", problems.count(Severity::kError)},
                                   {"warnings", problems.count(Severity::kWarning)},
                                   {"hints", problems.count(Severity::kHint)},
                                   {"fixed", boost::json::array(fixed.begin(), fixed.end())},
                                   {"problems", std::move(list)}};
  std::fputs(prettyJson(result).c_str(), stdout);
}

}  // namespace

int runCheck(const CheckOptions& options) {
  const std::string& file = options.document.file;
  std::vector<std::string> fixed;
  if (options.fix) fixed = fixDocument(options.document);
  Problems problems = problemsIn(openDocument(options.document));
  checkScripts(problems);
  const bool good = problems.count(Severity::kError) == 0 &&
                    (!options.strict || problems.count(Severity::kWarning) == 0);
  if (options.document.json) {
    printForScripts(file, problems, good, fixed);
  } else {
    for (const std::string& line : fixed) std::puts((file + ": fixed: " + line).c_str());
    printForPeople(file, problems);
  }
  return good ? kSuccess : kProblems;
}

}  // namespace zovk::tool
