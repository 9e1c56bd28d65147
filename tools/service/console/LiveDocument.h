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
#include "zovkpopup/ServiceDocument.h"

namespace zovk::service {

/// The document that games get now: `config.json` of the folder, with the owners of its entries.
struct LiveDocument {
  std::string text;
  boost::json::object document;      ///< With an array "popups".
  std::vector<std::int64_t> popups;  ///< The workshop's popup of each entry, or kNoPopup.
  std::string problem;               ///< The reason why the file cannot be edited; else empty.

  /// The owner of the entry in an otherwise empty list.
  static constexpr std::int64_t kNoPopup = 0;

  /// Fills an empty list with one expired entry without an owner. Games reject an empty list and
  /// keep their popups; with the entry they accept it, and their popups are taken back.
  void fillWhenEmpty();
  boost::json::array& entries() { return document.at("popups").as_array(); }
  const boost::json::array& entries() const { return document.at("popups").as_array(); }
  /// Returns the place of a popup's entry, or nothing if it is not live.
  std::optional<std::size_t> placeOf(std::int64_t popup) const;
};

/// Keeps the folder and the store in agreement: a release that a crash kept from going live goes
/// live, and changes made in the folder by hand become another release. One thread at a time.
class LiveFolder {
 public:
  /// A document with more entries cannot be edited, because each is checked for the overview.
  static constexpr std::size_t kMostPopups = 500;

  LiveFolder(const Folder& folder, PopupStore& store) : folder_(folder), store_(store) {}

  /// Reads what is live. `problem` says if it cannot be read.
  LiveDocument read();
  /// Puts a stored release live.
  void putLive(const Release& release);

 private:
  void finishRelease();
  LiveDocument readFile() const;
  LiveDocument takeIn(LiveDocument live, const std::optional<Release>& latest);

  const Folder& folder_;
  PopupStore& store_;
};

/// Calls `take` for each page of a document's entries, once for each name.
void forEachPage(
    const boost::json::array& entries, const tool::PageSource& pages,
    const std::function<void(const std::string& name, const std::string& bytes)>& take);

/// Stores the pages of a document's entries. Returns name and digest of each.
std::vector<std::pair<std::string, std::string>> keepPages(const boost::json::array& entries,
                                                           PopupStore& store,
                                                           const tool::PageSource& pages);

}  // namespace zovk::service
