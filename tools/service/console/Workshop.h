#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/ConfigDocument.h"
#include "service/console/Judge.h"
#include "service/console/LiveDocument.h"
#include "service/console/PopupStore.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// The place where popups are made, changed, published and taken back. Published popups are written
/// to the served folder, from which the service serves them. Any thread. A request that cannot be
/// carried out throws ConsoleError.
class Workshop {
 public:
  static constexpr std::size_t kLongestEntry = 64 << 10;
  static constexpr std::size_t kLongestPage = 4 << 20;

  Workshop(const Folder& folder, const ConfigDocument& config, Judge& judge,
           const std::string& file);

  /// Returns all popups with their state, and the releases.
  boost::json::object overview();
  /// Returns the bytes of a popup's page in the workshop.
  std::string page(std::int64_t id);

  std::int64_t create(const std::string& who, boost::json::object entry,
                      const std::optional<std::string>& page);
  void save(const std::string& who, std::int64_t id, std::int64_t version,
            boost::json::object entry, const std::optional<std::string>& page);
  std::int64_t duplicate(const std::string& who, std::int64_t id);
  void remove(const std::string& who, std::int64_t id);
  /// Sets the popup's priority between its new neighbours; `before` is 0 for the last place.
  void move(const std::string& who, std::int64_t id, std::int64_t before);

  void publish(const std::string& who, const std::vector<std::int64_t>& ids);
  void pause(const std::string& who, std::int64_t id);
  void end(const std::string& who, std::int64_t id);
  void rollBack(const std::string& who, std::int64_t release);

  boost::json::array history();
  ZOVKPopupExplanation explain(const PlayerQuestion& question);

 private:
  using Pages = std::map<std::string, std::string>;

  WorkedPopup known(std::int64_t id) const ZOVK_REQUIRES(mutex_);
  std::optional<std::string> pageOf(const WorkedPopup& popup) const ZOVK_REQUIRES(mutex_);
  ConfigDocument::PageSource pagesWith(Pages own) const;
  ConfigDocument::PageSource pagesOf(const WorkedPopup& popup) const ZOVK_REQUIRES(mutex_);
  std::vector<tool::Problem> problemsOf(const boost::json::object& entry,
                                        const ConfigDocument::PageSource& pages);
  void learnShownScripts(const std::vector<WorkedPopup>& popups, const LiveDocument& live)
      ZOVK_REQUIRES(mutex_);
  boost::json::object overviewOf(const WorkedPopup& popup, const LiveDocument& live)
      ZOVK_REQUIRES(mutex_);
  LiveDocument shown() ZOVK_REQUIRES(mutex_);
  LiveDocument workable() ZOVK_REQUIRES(mutex_);
  void bringBack(LiveDocument& next) ZOVK_REQUIRES(mutex_);
  void refuseProblems(const LiveDocument& next, const ConfigDocument::PageSource& pages);
  void release(const std::string& who, const std::string& what, LiveDocument next,
               const ConfigDocument::PageSource& pages, const std::vector<WorkedPopup>& changed)
      ZOVK_REQUIRES(mutex_);

  const ConfigDocument& config_;
  Judge& judge_;
  Mutex mutex_;
  PopupStore store_ ZOVK_GUARDED_BY(mutex_);
  LiveFolder live_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
