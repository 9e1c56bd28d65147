#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/PageFolder.h"
#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Checks the records of an accepted document, one by one: whether each can ever be shown, and
/// whether it is probably what its author means.
class PopupCheck {
 public:
  /// `mayTakeBack` is for documents in which a past `expire_time` takes a popup back.
  PopupCheck(DocumentEngine& engine, const PageFolder& pages, double now, bool mayTakeBack,
             Problems& problems)
      : engine_(engine), pages_(pages), now_(now), mayTakeBack_(mayTakeBack), problems_(problems) {}

  /// `index` is the entry's place in "popups".
  void check(const ZOVKPopupModel& popup, std::size_t index);

 private:
  void checkContent(const ZOVKPopupModel& popup);
  void checkPage(const ZOVKPopupModel& popup);
  void checkDigest(const ZOVKPopupModel& popup, const std::string& digest);
  void checkKinds(const ZOVKPopupModel& popup);
  void checkAddresses(const ZOVKPopupModel& popup);
  void checkAddress(const char* key, const std::string& address, bool mayHaveFragment);
  void checkCondition(const ZOVKPopupModel& popup);
  void checkTimes(const ZOVKPopupModel& popup);
  void checkScene(const ZOVKPopupModel& popup);
  void checkNames(const ZOVKPopupModel& popup);

  void error(const char* key, std::string message) {
    problems_.error(entryPath(index_, key), std::move(message));
  }
  void warning(const char* key, std::string message) {
    problems_.warning(entryPath(index_, key), std::move(message));
  }

  DocumentEngine& engine_;
  const PageFolder& pages_;
  const double now_;
  const bool mayTakeBack_;
  Problems& problems_;
  std::size_t index_ = 0;
  std::map<std::string, std::size_t> scenes_;  ///< Where each was found first.
  std::set<std::filesystem::path> readPages_;
  std::map<std::int32_t, std::size_t> popIds_;  ///< Where each was found first.
};

}  // namespace zovk::tool
