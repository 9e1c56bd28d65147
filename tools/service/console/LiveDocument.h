#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Folder.h"
#include "service/console/PopupStore.h"

namespace zovk::service {

/// What games get now: `config.json` of the folder, and whose its entries are.
struct LiveDocument {
  std::string text;
  boost::json::object document;      ///< With an array "popups".
  std::vector<std::int64_t> popups;  ///< The workshop's popup of each entry, or kNoPopup.
  std::string problem;               ///< Why the file cannot be worked with; else empty.

  /// Whose the entry is that stands in an otherwise empty list.
  static constexpr std::int64_t kNoPopup = 0;

  /// Games reject an empty list and go on with the popups that they have: one entry that is past
  /// and is nobody's makes it one that takes those back.
  void fillWhenEmpty();
  boost::json::array& entries() { return document.at("popups").as_array(); }
  const boost::json::array& entries() const { return document.at("popups").as_array(); }
  /// The place of a popup's entry; absent when it is not live.
  std::optional<std::size_t> placeOf(std::int64_t popup) const;
};

/// Keeps the folder and the store in step: a release that a crash kept from going live does so, and
/// what was changed in the folder by hand becomes a release of its own. One thread at a time.
class LiveFolder {
 public:
  /// With more entries the document is not worked with, as each is checked for the overview.
  static constexpr std::size_t kMostPopups = 500;

  LiveFolder(const Folder& folder, PopupStore& store) : folder_(folder), store_(store) {}

  /// What is live, read anew. What cannot be read is told in `problem`.
  LiveDocument read();
  /// Puts a release live that the store has.
  void putLive(const Release& release);

 private:
  void finishRelease();
  LiveDocument readFile() const;
  LiveDocument takeIn(LiveDocument live, const std::optional<Release>& latest);

  const Folder& folder_;
  PopupStore& store_;
};

/// The pages of a document's entries, kept in the store: name and digest of each.
std::vector<std::pair<std::string, std::string>> keepPages(
    const boost::json::array& entries, PopupStore& store,
    const std::function<std::optional<std::string>(const std::string&)>& pages);

}  // namespace zovk::service
