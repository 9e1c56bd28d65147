#include "engine/ZOVKPopupManager.h"

#include <utility>

#include "engine/Installation.h"
#include "support/Version.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

ZOVKPopupManager* ZOVKPopupManager::sharedInstance() {
  return Shared::holder().shared();
}

ZOVKPopupManager* ZOVKPopupManager::sharedInstanceSynch() {
  return Shared::holder().sharedSynch();
}

ZOVKPopupManager* ZOVKPopupManager::sharedInstanceNoSynch() {
  return Shared::holder().sharedNoSynch();
}

ZOVKPopupManager* ZOVKPopupManager::allocWithZone() {
  return Shared::holder().allocate();
}

void ZOVKPopupManager::purgeSharedInstance() {
  Shared::holder().purge();
}

std::shared_ptr<ZOVKPopupManager> ZOVKPopupManager::make() {
  installLinked();
  auto platform = currentPlatform();
  if (platform == nullptr) return nullptr;
  return std::make_shared<ZOVKPopupManager>(std::move(platform));
}

ZOVKPopupManager::ZOVKPopupManager(std::shared_ptr<Platform> platform)
    : platform_(std::move(platform)), popupWindow_(platform_) {}

void ZOVKPopupManager::init() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::init");
  debug("ZOVKPopup start, version:%@", kPopupVersion);
  loadConfigFile();
  deleteExpiredPopup();
}

void ZOVKPopupManager::startPopup(const std::string& baseUrl, const std::string& gameID,
                                  const std::string& gameKey) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::startPopup");
  debug("Start Popup, ID1:%@, ID2:%@", gameID, gameKey);
  const bool startedBefore = game_.with([&](StartedGame& game) {
    if (game.isStarted) return true;
    game = {true, baseUrl, gameID, gameKey};
    return false;
  });
  if (startedBefore) return debug("Popup had started");
  requestRemoteConfig();
}

void ZOVKPopupManager::setChannelID(std::int32_t channelID, const std::string& openID,
                                    const std::string& token, const std::string& jwtToken) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::setChannelID");
  debug("Set state ID1:%d ID2:%@ ID3:%@ ID4:%@", channelID, openID, token, jwtToken);
  loginState_->set({channelID, openID, token, jwtToken});
}

void ZOVKPopupManager::setList(PopupListPointer PopupLists::*list, PopupList popups) {
  auto next = std::make_shared<const PopupList>(std::move(popups));
  // The earlier list, which may be long, ends after the lock is free again.
  lists_.with([&](PopupLists& lists) { (lists.*list).swap(next); });
}

}  // namespace zovk
