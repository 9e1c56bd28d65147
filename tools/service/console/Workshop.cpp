#include "service/console/Workshop.h"

#include <algorithm>
#include <filesystem>
#include <limits>

#include <boost/json/serialize.hpp>

#include "service/console/ConsoleError.h"
#include "service/console/EntryFields.h"
#include "service/console/PopupOrder.h"

namespace zovk::service {
namespace {

constexpr std::size_t kShownHistory = 200;

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
