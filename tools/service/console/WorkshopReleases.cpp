#include <ctime>
#include <utility>

#include <boost/json/serialize.hpp>

#include "service/console/ConsoleError.h"
#include "service/console/EntryFields.h"
#include "service/console/ProblemList.h"
#include "service/console/Workshop.h"
#include "zovkpopup/JsonText.h"

namespace zovk::service {

// The live document without what stands there only because the list may not be empty.
LiveDocument Workshop::shown() {
  LiveDocument live = live_.read();
  for (std::size_t place = live.popups.size(); place-- > 0;) {
    if (live.popups[place] != LiveDocument::kNoPopup) continue;
    const auto offset = static_cast<std::ptrdiff_t>(place);
    live.entries().erase(live.entries().begin() + offset);
    live.popups.erase(live.popups.begin() + offset);
  }
  return live;
}

LiveDocument Workshop::workable() {
  LiveDocument live = shown();
  if (!live.problem.empty()) {
    throw ConsoleError(409, live.problem + ". Mend the file, or roll back");
  }
  return live;
}

// Four rounds of ten seconds at most. What they do not reach is published without the check.
void Workshop::refuseProblems(const LiveDocument& next, const ConfigDocument::PageSource& pages) {
  constexpr int kMostRounds = 4;
  ScriptReader reader(judge_.scripts(), kMostRounds, true);
  forEachPage(next.entries(), pages,
              [&reader](const std::string&, const std::string& page) { reader.add(page); });
  reader.finish();
  const auto problems = judge_.problems(boost::json::serialize(next.document), pages);
  if (!hasErrors(problems)) return;
  boost::json::array popups;
  for (const std::int64_t popup : next.popups) popups.push_back(popup);
  throw ConsoleError(409, "this cannot be published",
                     {{"problems", listOf(problems)}, {"popups", std::move(popups)}});
}

// The store has it before the folder does: a crash in between is made good at the next reading.
void Workshop::release(const std::string& who, const std::string& what, LiveDocument next,
                       const ConfigDocument::PageSource& pages,
                       const std::vector<WorkedPopup>& changed) {
  next.fillWhenEmpty();
  Release release{0, std::time(nullptr), who, what, tool::prettyJson(next.document), next.popups,
                  {}};
  {
    Transaction transaction(store_.database());
    release.pages = keepPages(next.entries(), store_, pages);
    for (const WorkedPopup& popup : changed) {
      store_.save(popup);
      store_.addHistory(who, what, popup.id, titleOf(popup.entry));
    }
    release.id = store_.add(release);
    transaction.commit();
  }
  live_.putLive(release);
}

void Workshop::publish(const std::string& who, const std::vector<std::int64_t>& ids) {
  const LockGuard lock(mutex_);
  LiveDocument next = workable();
  std::vector<WorkedPopup> changed;
  Pages own;
  for (const std::int64_t id : ids) {
    WorkedPopup popup = known(id);
    if (!popup.page.empty()) own[textIn(popup.entry, "page")] = pageOf(popup).value_or("");
    if (const auto place = next.placeOf(id)) {
      next.entries()[*place] = popup.entry;
    } else {
      next.entries().emplace_back(popup.entry);
      next.popups.push_back(id);
    }
    // From now on the folder's page is its page.
    popup.page.clear();
    popup.paused = false;
    changed.push_back(std::move(popup));
  }
  const auto pages = pagesWith(std::move(own));
  refuseProblems(next, pages);
  release(who, "published", next, pages, changed);
}

void Workshop::pause(const std::string& who, std::int64_t id) {
  const LockGuard lock(mutex_);
  LiveDocument next = workable();
  WorkedPopup popup = known(id);
  const auto place = next.placeOf(id);
  if (!place) throw ConsoleError(409, "it is not live");
  next.entries().erase(next.entries().begin() + static_cast<std::ptrdiff_t>(*place));
  next.popups.erase(next.popups.begin() + static_cast<std::ptrdiff_t>(*place));
  popup.paused = true;
  release(who, "paused", next, config_.pages(), {popup});
}

void Workshop::end(const std::string& who, std::int64_t id) {
  const LockGuard lock(mutex_);
  LiveDocument next = workable();
  WorkedPopup popup = known(id);
  const auto place = next.placeOf(id);
  if (!place || !next.entries()[*place].is_object()) throw ConsoleError(409, "it is not live");
  const std::time_t now = std::time(nullptr);
  next.entries()[*place].get_object()["expire_time"] = now;
  popup.entry["expire_time"] = now;
  release(who, "ended", next, config_.pages(), {popup});
}

// A popup of an old release may be deleted by now, or paused: it is there again.
void Workshop::bringBack(LiveDocument& next) {
  for (std::size_t i = 0; i < next.popups.size() && i < next.entries().size(); ++i) {
    if (next.popups[i] == LiveDocument::kNoPopup) continue;
    auto popup = store_.popup(next.popups[i]);
    if (!popup && next.entries()[i].is_object()) {
      next.popups[i] = store_.add(WorkedPopup{0, 0, next.entries()[i].get_object(), "", false});
    } else if (popup && popup->paused) {
      popup->paused = false;
      store_.save(*popup);
    }
  }
}

void Workshop::rollBack(const std::string& who, std::int64_t id) {
  const LockGuard lock(mutex_);
  live_.read();
  auto old = store_.release(id);
  if (!old) throw ConsoleError(404, "there is no such release");
  {
    Transaction transaction(store_.database());
    LiveDocument next;
    next.document = objectOf(old->document, "the release");
    next.popups = old->popups;
    bringBack(next);
    if (next.entries().empty()) {
      next.fillWhenEmpty();
      old->document = tool::prettyJson(next.document);
    }
    old->popups = next.popups;
    old->what = "rolled back to release " + std::to_string(id);
    old->who = who;
    old->time = std::time(nullptr);
    old->id = store_.add(*old);
    store_.addHistory(who, "rolled back", 0, "to release " + std::to_string(id));
    transaction.commit();
  }
  live_.putLive(*old);
}

}  // namespace zovk::service
