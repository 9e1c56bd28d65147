#include "service/console/Workshop.h"

#include <algorithm>
#include <ctime>
#include <limits>

#include <boost/json/serialize.hpp>

#include "service/console/ConsoleError.h"
#include "service/console/EntryFields.h"
#include "text/Md5.h"
#include "zovkpopup/JsonText.h"

namespace zovk::service {
namespace {

constexpr std::size_t kShownHistory = 200;

boost::json::object documentWith(const boost::json::object& entry) {
  return {{"code", 0}, {"popups", boost::json::array{entry}}};
}

const char* wordOf(tool::Severity severity) {
  if (severity == tool::Severity::kError) return "error";
  return severity == tool::Severity::kWarning ? "warning" : "hint";
}

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

const char* stateAt(std::time_t now, const boost::json::object& live) {
  const std::int64_t expires = numberIn(live, "expire_time");
  if (expires != 0 && expires <= now) return "ended";
  return numberIn(live, "valid_time") > now ? "scheduled" : "live";
}

void requireGood(const boost::json::object& entry, const std::optional<std::string>& page) {
  if (boost::json::serialize(entry).size() > Workshop::kLongestEntry) {
    throw ConsoleError(413, "a popup may have 64 KiB");
  }
  if (page && page->size() > Workshop::kLongestPage) {
    throw ConsoleError(413, "a page may have 4 MiB");
  }
  const std::string name = textIn(entry, "page");
  if (page && (!isPlainName(name) || name.size() > 100)) {
    throw ConsoleError(400, "\"page\" is not the name of a file: \"" + name + "\"");
  }
}

// "shop.html" becomes "shop-2.html", where 2 is the new popup's number.
std::string nameOfCopy(const std::string& name, std::int64_t number) {
  const std::filesystem::path path(name);
  return path.stem().string() + "-" + std::to_string(number) + path.extension().string();
}

std::string titleOf(const boost::json::object& entry) {
  return "popup " + std::to_string(numberIn(entry, "pop_id")) + ", scene \"" +
         textIn(entry, "scene") + "\"";
}

std::int32_t largestPopId(const std::vector<WorkedPopup>& popups) {
  std::int64_t largest = 0;
  for (const WorkedPopup& popup : popups) {
    largest = std::max(largest, numberIn(popup.entry, "pop_id"));
  }
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(largest, std::numeric_limits<std::int32_t>::max() - 1));
}

// As selection sees them: the higher priority first.
void sortByPriority(std::vector<WorkedPopup>& popups) {
  std::stable_sort(popups.begin(), popups.end(), [](const auto& left, const auto& right) {
    return numberIn(left.entry, "priority") > numberIn(right.entry, "priority");
  });
}

// Raises priorities from one place upwards, as far as that is needed for their order.
std::vector<WorkedPopup> raiseFrom(std::size_t place, std::vector<WorkedPopup>& order) {
  std::vector<WorkedPopup> changed;
  std::int64_t least = place + 1 < order.size() ? numberIn(order[place + 1].entry, "priority") + 1
                       : place == 0             ? 0
                                                : numberIn(order[place - 1].entry, "priority") - 1;
  order[place].entry["priority"] = least;
  changed.push_back(order[place]);
  for (std::size_t i = place; i-- > 0;) {
    ++least;
    if (numberIn(order[i].entry, "priority") >= least) break;
    order[i].entry["priority"] = least;
    changed.push_back(order[i]);
  }
  return changed;
}

}  // namespace

Workshop::Workshop(const Folder& folder, const ConfigDocument& config, Judge& judge,
                   const std::string& file)
    : config_(config), judge_(judge), store_(file), live_(folder, store_) {
  const LockGuard lock(mutex_);
  // What a crash kept from going live goes live before the first game asks.
  live_.read();
}

WorkedPopup Workshop::known(std::int64_t id) const {
  auto popup = store_.popup(id);
  if (!popup) throw ConsoleError(404, "there is no such popup");
  return std::move(*popup);
}

std::optional<std::string> Workshop::pageOf(const WorkedPopup& popup) const {
  if (!popup.page.empty()) return store_.page(popup.page);
  const std::string name = textIn(popup.entry, "page");
  return isPlainName(name) ? config_.pages()(name) : std::nullopt;
}

ConfigDocument::PageSource Workshop::pagesWith(Pages own) const {
  return [this, own = std::move(own)](const std::string& name) -> std::optional<std::string> {
    const auto found = own.find(name);
    return found == own.end() ? config_.pages()(name) : found->second;
  };
}

ConfigDocument::PageSource Workshop::pagesOf(const WorkedPopup& popup) const {
  Pages own;
  if (!popup.page.empty()) own[textIn(popup.entry, "page")] = store_.page(popup.page).value_or("");
  return pagesWith(std::move(own));
}

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

boost::json::object Workshop::overview() {
  const LockGuard lock(mutex_);
  const LiveDocument live = shown();
  auto popups = store_.popups();
  sortByPriority(popups);
  boost::json::array list;
  for (const WorkedPopup& popup : popups) list.push_back(overviewOf(popup, live));
  return {{"now", std::time(nullptr)},     {"base", config_.base()},
          {"problem", live.problem},       {"popups", std::move(list)},
          {"releases", store_.releases()}, {"next_pop_id", largestPopId(popups) + 1}};
}

std::string Workshop::page(std::int64_t id) {
  const LockGuard lock(mutex_);
  return pageOf(known(id)).value_or("");
}

std::int64_t Workshop::create(const std::string& who, boost::json::object entry,
                              const std::optional<std::string>& page) {
  requireGood(entry, page);
  const LockGuard lock(mutex_);
  if (store_.popups().size() >= LiveFolder::kMostPopups)
    throw ConsoleError(409, "there may be 500 popups");
  Transaction transaction(store_.database());
  WorkedPopup popup{0, 0, std::move(entry), page ? store_.addPage(*page) : "", false};
  const std::int64_t id = store_.add(popup);
  store_.addHistory(who, "made", id, titleOf(popup.entry));
  transaction.commit();
  return id;
}

void Workshop::save(const std::string& who, std::int64_t id, std::int64_t version,
                    boost::json::object entry, const std::optional<std::string>& page) {
  requireGood(entry, page);
  const LockGuard lock(mutex_);
  Transaction transaction(store_.database());
  WorkedPopup popup = known(id);
  if (popup.version != version) {
    throw ConsoleError(409, "somebody else has changed this popup meanwhile; load it anew");
  }
  if (page) popup.page = store_.addPage(*page);
  std::string details;
  for (const auto& member : entry) {
    const auto* const before = popup.entry.if_contains(member.key());
    if (before != nullptr && *before == member.value()) continue;
    details += (details.empty() ? "" : ", ") + std::string(member.key());
  }
  if (page) details += details.empty() ? "the page" : ", the page";
  popup.entry = std::move(entry);
  store_.save(popup);
  store_.addHistory(who, "changed", id, titleOf(popup.entry) + ": " + details);
  transaction.commit();
}

std::int64_t Workshop::duplicate(const std::string& who, std::int64_t id) {
  const LockGuard lock(mutex_);
  const auto all = store_.popups();
  if (all.size() >= LiveFolder::kMostPopups) throw ConsoleError(409, "there may be 500 popups");
  Transaction transaction(store_.database());
  WorkedPopup copy = known(id);
  const auto page = pageOf(copy);
  const std::int64_t number = largestPopId(all) + 1;
  copy.entry["pop_id"] = number;
  copy.paused = false;
  const std::string name = textIn(copy.entry, "page");
  if (page && !name.empty()) {
    copy.entry["page"] = nameOfCopy(name, number);
    copy.page = store_.addPage(*page);
  }
  const std::int64_t made = store_.add(copy);
  store_.addHistory(who, "duplicated", made, titleOf(copy.entry));
  transaction.commit();
  return made;
}

void Workshop::remove(const std::string& who, std::int64_t id) {
  const LockGuard lock(mutex_);
  const WorkedPopup popup = known(id);
  if (shown().placeOf(id)) throw ConsoleError(409, "it is live: pause it first");
  Transaction transaction(store_.database());
  store_.remove(id);
  store_.addHistory(who, "deleted", id, titleOf(popup.entry));
  transaction.commit();
}

void Workshop::move(const std::string& who, std::int64_t id, std::int64_t before) {
  const LockGuard lock(mutex_);
  WorkedPopup moved = known(id);
  auto order = store_.popups();
  sortByPriority(order);
  std::erase_if(order, [id](const WorkedPopup& popup) { return popup.id == id; });
  const auto next = std::find_if(order.begin(), order.end(),
                                 [before](const WorkedPopup& popup) { return popup.id == before; });
  if (before != 0 && next == order.end()) throw ConsoleError(404, "there is no such popup");
  const auto place = static_cast<std::size_t>(next - order.begin());
  order.insert(next, moved);
  Transaction transaction(store_.database());
  for (const WorkedPopup& popup : raiseFrom(place, order)) {
    if (numberIn(popup.entry, "priority") > std::numeric_limits<std::int32_t>::max()) {
      throw ConsoleError(409, "there is no higher priority");
    }
    store_.save(popup);
  }
  store_.addHistory(who, "moved", id, titleOf(moved.entry));
  transaction.commit();
}

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

void Workshop::refuseProblems(const LiveDocument& next, const ConfigDocument::PageSource& pages) {
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

boost::json::array Workshop::history() {
  const LockGuard lock(mutex_);
  return store_.history(kShownHistory);
}

ZOVKPopupExplanation Workshop::explain(const PlayerQuestion& question) {
  const LockGuard lock(mutex_);
  const LiveDocument live = live_.read();
  if (!live.problem.empty()) throw ConsoleError(409, live.problem);
  return judge_.explain(boost::json::serialize(live.document), config_.pages(), question);
}

}  // namespace zovk::service
