#include <algorithm>
#include <utility>

#include "engine/ZOVKPopupManager.h"
#include "presentation/ZOVKPopupViewController.h"
#include "zovkpopup/Result.h"

namespace zovk {
namespace {

CallbackPointer shared(const ZOVKPopupComplete& complete) {
  return complete ? std::make_shared<const ZOVKPopupComplete>(complete) : nullptr;
}

}  // namespace

void ZOVKPopupManager::showPopup(const std::string& scene, std::uint64_t sceneType,
                                 const ZOVKPopupComplete& complete) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  const CallbackPointer callback = shared(complete);
  debug("Show Popup, scene:%@, sceneType:%d, complete:%p", scene, sceneType, callback.get());
  const PopupListPointer source = mergedPopups();
  const PopupList valid = scene.empty() ? getValidPopupForSceneType(sceneType, *source)
                                        : getValidPopupForScene(scene, *source);
  notifyNotSelected(scene, sceneType);
  if (valid.empty()) {
    debug("No valid Popup for scene:%@ sceneType:%d", scene, sceneType);
    if (callback != nullptr) (*callback)(ZOVKPopupResultError, "No valid Popup now");
    return;
  }
  if (valid.front()->pop_freq == kPopFreqConditional) return showAfterCondition(valid, callback);
  cachePopup(valid, callback);
  showPopup();
}

// Asks the condition of the first popup. On a commit the others are queued; the queue goes on by
// itself when the conditional popup's entry has ended.
void ZOVKPopupManager::showAfterCondition(const PopupList& popups,
                                          const CallbackPointer& complete) {
  const auto chain = std::make_shared<const ZOVKPopupComplete>(
      [self = shared_from_this(), popups, complete](std::int32_t code, const std::string& msg) {
        if (code != ZOVKPopupResultCommit) {
          if (complete != nullptr) (*complete)(code, msg);
          self->notifyRequestEnded({popups.begin() + 1, popups.end()});
          return;
        }
        // The callback is not called for the commit of a lone conditional popup: nothing of the
        // request is left to show.
        if (popups.size() < 2) return;
        self->cachePopup(PopupList(popups.begin() + 1, popups.end()), complete);
      });
  queryConditionPopup(popups.front(), chain);
}

// A conditional popup's entry holds the engine, which would hold itself for good.
void ZOVKPopupManager::stopWork() {
  stopping_ = true;
  queue_.drop();
}

void ZOVKPopupManager::cachePopup(const PopupList& popups, const CallbackPointer& complete) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::cachePopup");
  debug("Cache Popup, Popup count:%d, complete:%p", popups.size(), complete.get());
  if (popups.empty()) logError("popupArr is NULL or empty");
  if (complete == nullptr) debug("complete is NULL");
  queue_.push({popups, complete});
  debug("Cache callback done");
}

std::optional<QueueEntry> ZOVKPopupManager::getPopupFromCache() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::getPopupFromCache");
  debug("Get Popup from cache");
  return queue_.front();
}

void ZOVKPopupManager::showPopup() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  debug("Show Popup");
  const auto entry = getPopupFromCache();
  if (!entry) {
    debug("No Popup to show");
    return endShowing();
  }
  if (!queue_.takeScreenFor(*entry)) return debug("Be Popuping now, waiting for last Popup finish");
  platform_->mainQueue.async([self = shared_from_this(), entry = *entry] { self->present(entry); });
}

void ZOVKPopupManager::endShowing() {
  const auto end = [self = shared_from_this()] {
    self->stopCheckKeyWindow();
    self->releasePopupWindow();
    self->cover_.uncover();
  };
  // Timer and window belong to the main thread, wherever the queue was found empty.
  if (platform_->mainQueue.isMainThread()) return end();
  platform_->mainQueue.async([self = shared_from_this(), end] {
    if (!self->isPopuping()) end();  // another request may have taken the screen by now
  });
}

void ZOVKPopupManager::present(const QueueEntry& entry) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  if (!coverGame()) return leaveQueued();
  if (window() == nullptr) initPopupWindow();
  debug("Start show Popup");
  const auto self = weak_from_this();
  auto controller = std::make_shared<ZOVKPopupViewController>(
      platform_, [self](const std::optional<std::string>& data, boost::json::object* extraJson) {
        const auto manager = self.lock();
        return manager != nullptr && manager->parseConditionPopupResp(data, extraJson);
      });
  const StartedGame game = game_.get();
  controller->setLoginState(game.gameID, game.gameKey, loginState_);
  controller->setEventListener([self](ZOVKPopupEvent event) {
    if (const auto manager = self.lock()) manager->notify(std::move(event));
  });
  controller->showPopup(entry.popups, window().get(),
                        [self, entry](std::int32_t code, const std::string& msg) {
                          if (const auto manager = self.lock()) {
                            manager->finishEntry(entry, code, msg);
                          }
                        });
  startCheckKeyWindow();
}

void ZOVKPopupManager::finishEntry(const QueueEntry& entry, std::int32_t action,
                                   const std::string& msg) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  debug("Show Popup done");
  doCallback(entry.complete, action, msg);
  queue_.finish(entry);
  showPopup();
}

void ZOVKPopupManager::doCallback(const CallbackPointer& complete, std::int32_t action,
                                  const std::string& msg) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::doCallback");
  if (complete == nullptr) return;
  debug("Do callback");
  if (action != ZOVKPopupResultError || !msg.empty()) return (*complete)(action, msg);
  platform_->mainQueue.async([complete] {
    constexpr DebugLog later = managerLog("ZOVKPopupManager::doCallback");
    later("Do callback");
    (*complete)(ZOVKPopupResultSkip, "reatin complete");
  });
}

}  // namespace zovk
