#include "service/console/LiveDocument.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <map>
#include <set>

#include "service/Pages.h"
#include "service/console/EntryFields.h"
#include "service/console/WholeFile.h"
#include "text/Md5.h"

namespace zovk::service {
namespace {

constexpr const char* kFile = "config.json";
constexpr const char* kByHand = "config.json";

// The entries of a document that was live before, to be found again in one that was changed by
// hand.
class KnownEntries {
 public:
  KnownEntries(const std::optional<Release>& release, const PopupStore& store) : store_(store) {
    if (!release) return;
    const boost::json::object document = objectOf(release->document, kFile);
    const auto* const list = document.if_contains("popups");
    if (list == nullptr || !list->is_array()) return;
    const auto& entries = list->get_array();
    for (std::size_t i = 0; i < std::min(entries.size(), release->popups.size()); ++i) {
      if (entries[i].is_object()) known_[release->popups[i]] = entries[i].get_object();
    }
  }

  /// Returns the popup of an entry, each one once: that of the same entry, or else of the same
  /// number; otherwise 0.
  std::int64_t take(const boost::json::object& entry) {
    auto found = std::find_if(known_.begin(), known_.end(),
                              [&](const auto& known) { return known.second == entry; });
    if (found == known_.end()) {
      found = std::find_if(known_.begin(), known_.end(), [&](const auto& known) {
        return numberIn(known.second, "pop_id") == numberIn(entry, "pop_id");
      });
    }
    if (found == known_.end()) return 0;
    const std::int64_t popup = found->first;
    before_ = std::move(found->second);
    known_.erase(found);
    return store_.popup(popup) ? popup : 0;
  }
  /// Returns the earlier state of the entry that `take` found.
  const boost::json::object& before() const { return before_; }

 private:
  const PopupStore& store_;
  std::map<std::int64_t, boost::json::object> known_;
  boost::json::object before_;
};

const boost::json::object& filling() {
  static const boost::json::object kFilling{{"scene", "nothing"}, {"scene_type", 1},
                                            {"pop_type", 1},      {"content_type", 3},
                                            {"pop_freq", 2},      {"expire_time", 1}};
  return kFilling;
}

std::string bytesOf(const Folder& folder, const std::string& name) {
  const auto page = readPage(folder, name);
  return page ? page->bytes : "";
}

}  // namespace

void LiveDocument::fillWhenEmpty() {
  if (!entries().empty()) return;
  entries().emplace_back(filling());
  popups.push_back(kNoPopup);
}

std::optional<std::size_t> LiveDocument::placeOf(std::int64_t popup) const {
  const auto found = std::find(popups.begin(), popups.end(), popup);
  if (found == popups.end()) return std::nullopt;
  return static_cast<std::size_t>(found - popups.begin());
}

void forEachPage(
    const boost::json::array& entries, const tool::PageSource& pages,
    const std::function<void(const std::string& name, const std::string& bytes)>& take) {
  std::set<std::string> taken;
  for (const auto& entry : entries) {
    if (!entry.is_object()) continue;
    const std::string name = textIn(entry.get_object(), "page");
    if (!isPlainName(name) || !taken.insert(name).second) continue;
    if (const auto bytes = pages(name)) take(name, *bytes);
  }
}

std::vector<std::pair<std::string, std::string>> keepPages(const boost::json::array& entries,
                                                           PopupStore& store,
                                                           const tool::PageSource& pages) {
  std::map<std::string, std::string> kept;
  forEachPage(entries, pages, [&kept, &store](const std::string& name, const std::string& bytes) {
    kept[name] = store.addPage(bytes);
  });
  return {kept.begin(), kept.end()};
}

void LiveFolder::putLive(const Release& release) {
  for (const auto& [name, digest] : release.pages) {
    const auto bytes = store_.page(digest);
    if (!bytes || !isPlainName(name)) continue;
    const auto there = readPage(folder_, name);
    if (!there || there->bytes != *bytes) {
      writeWhole(folder_.path(std::filesystem::path("pages") / name), *bytes);
    }
  }
  writeWhole(folder_.path(kFile), release.document);
  store_.markLive(release.id);
}

void LiveFolder::finishRelease() {
  const auto latest = store_.latestRelease();
  if (latest && !store_.isLive(latest->id)) putLive(*latest);
}

// Returns the document as it stands in the folder, or the reason why it cannot be used.
LiveDocument LiveFolder::readFile() const {
  LiveDocument live;
  live.document = {{"code", 0}, {"popups", boost::json::array()}};
  try {
    const auto file = folder_.read(kFile);
    if (!file) return live;
    live.text = file->bytes;
    auto document = objectOf(file->bytes, kFile);
    const auto* const entries = document.if_contains("popups");
    if (entries == nullptr || !entries->is_array()) {
      live.problem = std::string(kFile) + ": \"popups\" is no array";
    } else if (entries->get_array().size() > kMostPopups) {
      live.problem = std::string(kFile) + ": has more popups than the console works with, " +
                     std::to_string(kMostPopups);
    } else {
      live.document = std::move(document);
    }
  } catch (const FolderError& error) {
    live.problem = error.what();
  }
  return live;
}

LiveDocument LiveFolder::read() {
  finishRelease();
  LiveDocument live = readFile();
  if (!live.problem.empty() || live.text.empty()) return live;
  const auto latest = store_.latestRelease();
  if (latest && latest->document == live.text && latest->popups.size() == live.entries().size()) {
    live.popups = latest->popups;
    return live;
  }
  return takeIn(std::move(live), latest);
}

LiveDocument LiveFolder::takeIn(LiveDocument live, const std::optional<Release>& latest) {
  KnownEntries known(latest, store_);
  Transaction transaction(store_.database());
  for (const auto& value : live.entries()) {
    const boost::json::object entry =
        value.is_object() ? value.get_object() : boost::json::object();
    std::int64_t popup = known.take(entry);
    if (entry == filling()) {
      popup = LiveDocument::kNoPopup;
    } else if (popup == 0) {
      popup = store_.add(WorkedPopup{0, 0, entry, "", false});
    } else if (auto worked = store_.popup(popup); worked->entry == known.before()) {
      // Nothing waits to be published, so the workshop follows the file.
      worked->entry = entry;
      worked->paused = false;
      store_.save(*worked);
    }
    live.popups.push_back(popup);
  }
  const char* const what = latest ? "changed by hand" : "taken in";
  Release release{0, std::time(nullptr), kByHand, what, live.text, live.popups, {}};
  release.pages =
      keepPages(live.entries(), store_, [&](const std::string& name) -> std::optional<std::string> {
        std::string bytes = bytesOf(folder_, name);
        if (bytes.empty()) return std::nullopt;
        return bytes;
      });
  store_.markLive(store_.add(release));
  store_.addHistory(kByHand, what, 0, std::to_string(live.popups.size()) + " popups");
  transaction.commit();
  return live;
}

}  // namespace zovk::service
