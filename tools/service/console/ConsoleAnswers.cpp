#include "service/console/Console.h"
#include "service/console/ConsoleRequest.h"

namespace zovk::service {
namespace {

constexpr std::size_t kShownAnswers = 100;

}  // namespace

void Console::addAnswers() {
  get("/console/api/answers", [this](const Call& call) {
    boost::json::object totals = answers_.totals(filterOf(call.request));
    totals["latest"] = answers_.list(filterOf(call.request), kShownAnswers);
    return jsonAnswer(totals);
  });
  get("/console/api/answers.csv", [this](const Call& call) {
    Answer answer;
    answer.type = "text/csv; charset=utf-8";
    answer.body = answers_.csv(filterOf(call.request));
    return answer;
  });
  get("/console/api/answers.json", [this](const Call& call) {
    return jsonAnswer(answers_.list(filterOf(call.request), Answers::kMostExported));
  });
  get("/console/api/refusals", [this](const Call&) {
    return jsonAnswer(boost::json::object{{"refusals", refusals_.list()}});
  });
}

}  // namespace zovk::service
