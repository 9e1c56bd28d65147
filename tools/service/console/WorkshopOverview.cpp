#include <ctime>

#include <boost/json/serialize.hpp>

#include "service/console/EntryFields.h"
#include "service/console/PopupOrder.h"
#include "service/console/ProblemList.h"
#include "service/console/Workshop.h"

namespace zovk::service {
namespace {

boost::json::object documentWith(const boost::json::object& entry) {
  return {{"code", 0}, {"popups", boost::json::array{entry}}};
}

const char* stateAt(std::time_t now, const boost::json::object& live) {
  const std::int64_t expires = numberIn(live, "expire_time");
  if (expires != 0 && expires <= now) return "ended";
  return numberIn(live, "valid_time") > now ? "scheduled" : "live";
}

}  // namespace

std::vector<tool::Problem> Workshop::problemsOf(const boost::json::object& entry,
                                                const ConfigDocument::PageSource& pages) {
  auto problems = judge_.problems(boost::json::serialize(documentWith(entry)), pages);
  constexpr std::string_view kPrefix = "/popups/0";
  for (tool::Problem& problem : problems) {
    if (problem.path.starts_with(kPrefix)) problem.path.erase(0, kPrefix.size());
  }
  return problems;
}

boost::json::object Workshop::overviewOf(const WorkedPopup& popup, const LiveDocument& live) {
  const auto problems = problemsOf(popup.entry, pagesOf(popup));
  const auto place = live.placeOf(popup.id);
  boost::json::object result{{"id", popup.id},
                             {"version", popup.version},
                             {"entry", popup.entry},
                             {"problems", listOf(problems)},
                             {"changed", false}};
  const std::optional<std::string> page = pageOf(popup);
  if (page) result["page_size"] = page->size();
  // What is kept back on purpose hinders nobody.
  bool broken = hasErrors(problems) && !popup.paused;
  std::string state = popup.paused ? "paused" : "draft";
  if (place && live.entries()[*place].is_object()) {
    const boost::json::object& entry = live.entries()[*place].get_object();
    const auto liveProblems = problemsOf(entry, config_.pages());
    result["live"] = entry;
    result["changed"] = entry != popup.entry || !popup.page.empty();
    result["live_problems"] = listOf(liveProblems);
    broken = hasErrors(liveProblems);
    state = stateAt(std::time(nullptr), entry);
  }
  result["state"] = broken ? "broken" : state;
  return result;
}

// One round, so that the overview is soon there. The next one goes on with the rest.
void Workshop::learnShownScripts(const std::vector<WorkedPopup>& popups, const LiveDocument& live) {
  ScriptReader reader(judge_.scripts(), 1, false);
  for (const WorkedPopup& popup : popups) {
    if (const auto page = pageOf(popup)) reader.add(*page);
  }
  if (live.problem.empty()) {
    forEachPage(live.entries(), config_.pages(),
                [&reader](const std::string&, const std::string& page) { reader.add(page); });
  }
  reader.finish();
}

boost::json::object Workshop::overview() {
  const LockGuard lock(mutex_);
  const LiveDocument live = shown();
  auto popups = store_.popups();
  sortByPriority(popups);
  learnShownScripts(popups, live);
  boost::json::array list;
  for (const WorkedPopup& popup : popups) list.push_back(overviewOf(popup, live));
  return {{"now", std::time(nullptr)},
          {"base", config_.base()},
          {"problem", live.problem},
          {"popups", std::move(list)},
          {"releases", store_.releases()},
          {"next_pop_id", largestPopId(popups) + 1},
          {"unchecked", judge_.scripts().unchecked()}};
}

}  // namespace zovk::service
