#include <cstdio>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "zovkpopup/Commands.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/PopupCheck.h"
#include "zovkpopup/ShapeCheck.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// The records are those of the entries that the engine does not pass over.
void checkRecords(const boost::json::value& document, DocumentEngine& engine,
                  const OpenDocument& opened, Problems& problems) {
  PopupCheck check(engine, opened.pages, opened.now, problems);
  const boost::json::array& entries = document.at("popups").as_array();
  std::size_t record = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto* const entry = entries[i].if_object();
    if (entry != nullptr && !entry->empty()) check.check(*engine.popups()[record++], i);
  }
}

Problems problemsOf(const OpenDocument& opened) {
  Problems problems;
  DocumentEngine engine(opened.now);
  const auto rejection = engine.load(opened.text, opened.configType, opened.pages);
  const JsonText json = parseJson(opened.text);
  if (!json.error.empty()) {
    problems.add({Severity::kError, "", "is no JSON: " + json.error, json.line, json.column});
    return problems;
  }
  checkShape(json.value, opened.configType, problems);
  if (!rejection) {
    checkRecords(json.value, engine, opened, problems);
  } else if (problems.count(Severity::kError) == 0) {
    problems.error("", "is rejected by the engine: " + *rejection);
  }
  return problems;
}

const char* word(Severity severity) {
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

void printForScripts(const std::string& file, const Problems& problems, bool good) {
  boost::json::array list;
  for (const Problem& problem : problems.list()) list.push_back(jsonOf(problem));
  const boost::json::object result{{"document", file},
                                   {"ok", good},
                                   {"errors", problems.count(Severity::kError)},
                                   {"warnings", problems.count(Severity::kWarning)},
                                   {"problems", std::move(list)}};
  std::fputs(prettyJson(result).c_str(), stdout);
}

}  // namespace

int runCheck(const CheckOptions& options) {
  const std::string& file = options.document.file;
  const Problems problems = problemsOf(openDocument(options.document));
  const bool good =
      options.strict ? problems.list().empty() : problems.count(Severity::kError) == 0;
  if (options.document.json) {
    printForScripts(file, problems, good);
  } else {
    printForPeople(file, problems);
  }
  return good ? kSuccess : kProblems;
}

}  // namespace zovk::tool
