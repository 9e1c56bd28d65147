#include "zovkpopup/PreviewAnswerText.h"

#include <cstdio>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "support/ActionNames.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

int exitCodeOf(const PreviewAnswer& answer) {
  return answer.code >= 0 ? kSuccess : kProblems;
}

}  // namespace

int printAnswer(const PreviewAnswer& answer) {
  const std::string action(actions::ofResult(answer.code));
  std::printf("%d %s %s\n", answer.code, action.c_str(), answer.message.c_str());
  std::fflush(stdout);
  return exitCodeOf(answer);
}

int printAnswerAsJson(const PreviewAnswer& answer, const PreviewFindings& findings) {
  boost::json::array console;
  for (const ConsoleMessage& message : findings.console) {
    console.push_back({{"level", message.level}, {"place", message.place}, {"text", message.text}});
  }
  boost::json::array remarks;
  for (const std::string& remark : findings.remarks) remarks.emplace_back(remark);
  const boost::json::object result{{"code", answer.code},
                                   {"answer", actions::ofResult(answer.code)},
                                   {"message", answer.message},
                                   {"console", std::move(console)},
                                   {"remarks", std::move(remarks)}};
  std::fputs(prettyJson(result).c_str(), stdout);
  return exitCodeOf(answer);
}

}  // namespace zovk::tool
