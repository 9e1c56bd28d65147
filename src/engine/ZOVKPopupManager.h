#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/json/object.hpp>

#include "engine/DisplayQueue.h"
#include "engine/EngineState.h"
#include "engine/GameCover.h"
#include "engine/PopupWindow.h"
#include "logging/ZPLogger.h"
#include "record/LoginStateRecord.h"
#include "record/ZOVKPopupModel.h"
#include "support/Guarded.h"
#include "support/SharedInstance.h"
#include "zovkpopup/Explain.h"
#include "zovkpopup/Hooks.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

struct ConfigDocument;

/// The popup engine: the lists of popups, the display queue, the popup window.
///
/// Show requests and selections may come on any thread and work on snapshots of the lists. What any
/// thread can reach has a lock of its own, which is never held across a callback. Use window, timer
/// and page controller on the main thread. The object owns everything it holds; later callbacks
/// refer to it weakly. Nothing throws: a failure writes one log line and gives false, nothing or
/// -1.
class ZOVKPopupManager : public std::enable_shared_from_this<ZOVKPopupManager> {
 public:
  /// Returns the shared object and makes it on first use; null if there is no platform.
  static ZOVKPopupManager* sharedInstance();
  static ZOVKPopupManager* sharedInstanceSynch();
  static ZOVKPopupManager* sharedInstanceNoSynch();
  static ZOVKPopupManager* allocWithZone();
  /// Drops the shared object. Main thread only, while nobody uses it. The next access makes a new
  /// one.
  static void purgeSharedInstance();
  ZOVKPopupManager* copyWithZone() { return this; }

  explicit ZOVKPopupManager(std::shared_ptr<Platform> platform);
  ZOVKPopupManager(const ZOVKPopupManager&) = delete;
  ZOVKPopupManager& operator=(const ZOVKPopupManager&) = delete;
  void init();

  /// Stops long work on other threads, such as reading a document, and drops waiting requests
  /// without calling back. For the end of the platform, which waits for those threads. Cannot be
  /// undone.
  void stopWork();

  void startPopup(const std::string& baseUrl, const std::string& gameID,
                  const std::string& gameKey);
  void setChannelID(std::int32_t channelID, const std::string& openID, const std::string& token,
                    const std::string& jwtToken);

  // The configuration document.
  /// Returns true if the document was accepted; `popUps`, which may be null, then holds its
  /// records.
  bool parseConfigFile(std::string_view fileData, std::uint64_t configType, PopupList* popUps);
  void loadConfigFile();
  void loadRemoteConfig();
  void loadLocalConfig();
  void mergeConfig();
  void deleteExpiredPopup();
  void deleteExpirePopupFile(const PopupList& popups);
  void deleteExpirePopupOnceRecord(const PopupList& popups);
  /// Returns the seconds since 1970 by the device's clock.
  double getCurrentTime() const;

  // Selection.
  bool havePopup(std::uint64_t sceneType);
  /// Returns the valid popups, best first; may be empty.
  PopupList getValidPopupForSceneType(std::uint64_t sceneType, const PopupList& srcPopups);
  /// Returns one popup at most.
  PopupList getValidPopupForScene(const std::string& scene, const PopupList& srcPopups);
  /// Explains what a request to show popups would select now, and why. Changes and logs nothing.
  ZOVKPopupExplanation explain(const std::string& scene, std::uint64_t sceneType);

  // The display queue and its window.
  void showPopup(const std::string& scene, std::uint64_t sceneType,
                 const ZOVKPopupComplete& complete);
  void cachePopup(const PopupList& popups, const CallbackPointer& complete);
  /// Returns the oldest entry, which stays in the queue; nothing if the queue is empty.
  std::optional<QueueEntry> getPopupFromCache();
  void showPopup();
  void initPopupWindow();
  void releasePopupWindow();
  void startCheckKeyWindow();
  void makePopupToKeyWindow();
  void stopCheckKeyWindow();
  void doCallback(const CallbackPointer& complete, std::int32_t action, const std::string& msg);
  /// Main thread only.
  void setHooks(ZOVKPopupHooks hooks);
  /// Holds popups back or ends that. Meanwhile requests are queued, a popup on screen stays, and no
  /// other one is shown.
  void setHeldBack(bool heldBack);

  // What the game hears of each popup. Nothing is sent unless its hooks have a function for it.
  /// Sends an event from the main queue. Any thread.
  void notify(ZOVKPopupEvent event);

  // The privacy policy.
  void showPolicy(const ZOVKPopupComplete& complete);
  bool needToShowPolicy();
  void savePolicyState();

  // The popup service.
  void requestRemoteConfig();
  void handleRemoteConfigResponse(const std::optional<std::string>& data);
  void downloadRemotePopupFile(const PopupList& popups);
  void queryConditionPopup(const PopupPointer& popup, const CallbackPointer& complete);
  /// Returns whether the answer wants the popup to be shown. `extraJson`, which may be null, then
  /// receives the answer's extra parameters.
  bool parseConditionPopupResp(const std::optional<std::string>& data,
                               boost::json::object* extraJson);

  // State, each field as a copy of the moment.
  bool isPopupStart() const { return game_.get().isStarted; }
  bool isPopuping() const { return queue_.isScreenTaken(); }
  bool isHeldBack() const { return queue_.isHeldBack(); }
  const std::shared_ptr<Window>& window() const { return popupWindow_.window(); }
  const std::shared_ptr<Timer>& timer() const { return popupWindow_.timer(); }
  std::optional<std::string> policyPublishTime() const { return policyPublishTime_.get(); }
  std::deque<QueueEntry> popupCache() const { return queue_.entries(); }
  PopupList remotePopupArr() const { return *lists_.get().remote; }
  PopupList localPopupArr() const { return *lists_.get().local; }
  PopupList mergePopupArr() const { return *mergedPopups(); }
  double startTime() const { return times_.get().startTime; }
  double serverTime() const { return times_.get().serverTime; }
  double requestTime() const { return times_.get().requestTime; }
  std::string popUrl() const { return game_.get().popUrl; }
  std::string gameID() const { return game_.get().gameID; }
  std::string gameKey() const { return game_.get().gameKey; }
  ZOVKPopupLoginStateModel loginState() const { return loginState_->get(); }
  void setRemotePopupArr(PopupList popups) { setList(&PopupLists::remote, std::move(popups)); }
  void setLocalPopupArr(PopupList popups) { setList(&PopupLists::local, std::move(popups)); }
  void setMergePopupArr(PopupList popups) { setList(&PopupLists::merged, std::move(popups)); }

 private:
  friend class SharedInstance<ZOVKPopupManager>;
  using Shared = SharedInstance<ZOVKPopupManager>;
  static std::shared_ptr<ZOVKPopupManager> make();

  void expectPopup();
  PopupListPointer mergedPopups() const {
    return lists_.with([](const PopupLists& lists) { return lists.merged; });
  }
  void setList(PopupListPointer PopupLists::*list, PopupList popups);
  bool takeDocument(const ConfigDocument& document, std::string_view text, std::uint64_t configType,
                    PopupList* popUps);
  bool takeRemoteHead(const ConfigDocument& document, std::string_view text);
  void present(const QueueEntry& entry);
  bool coverGame();
  void leaveQueued();
  void notifyNotShown(const ZOVKPopupModel& popup, const char* reason, const char* sentence);
  void notifyPolicyNotNeeded();
  void notifyNotSelected(const std::string& scene, std::uint64_t sceneType);
  void notifyRequestEnded(const PopupList& popups);
  void endShowing();
  void finishEntry(const QueueEntry& entry, std::int32_t action, const std::string& msg);
  void showAfterCondition(const PopupList& popups, const CallbackPointer& complete);
  void handleConditionAnswer(const PopupPointer& popup, const CallbackPointer& complete,
                             bool success, const std::optional<std::string>& data);
  void savePage(const ZOVKPopupModel& popup, bool success, const std::optional<std::string>& path);

  std::shared_ptr<Platform> platform_;
  std::atomic<bool> stopping_{false};
  Guarded<PopupLists> lists_;
  Guarded<StartedGame> game_;
  Guarded<ServiceTimes> times_;
  Guarded<std::optional<std::string>> policyPublishTime_;
  const std::shared_ptr<LoginStateRecord> loginState_ = std::make_shared<LoginStateRecord>();
  DisplayQueue queue_;
  PopupWindow popupWindow_;
  GameCover cover_;
  std::atomic<bool> hearsEvents_{false};
  std::function<void(const ZOVKPopupEvent&)> eventListener_;  // main thread only
};

/// The debug lines of one operation of the engine.
constexpr DebugLog managerLog(const char* function) {
  return {"ZOVKPopupManager", function};
}

}  // namespace zovk
