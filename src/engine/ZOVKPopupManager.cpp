#include "engine/ZOVKPopupManager.h"

#include <utility>

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
  auto platform = currentPlatform();
  if (platform == nullptr) return nullptr;
  return std::make_shared<ZOVKPopupManager>(std::move(platform));
}

ZOVKPopupManager::ZOVKPopupManager(std::shared_ptr<Platform> platform)
    : platform_(std::move(platform)) {}

ZOVKPopupManager::~ZOVKPopupManager() {
  if (timer_ != nullptr) timer_->invalidate();
  if (window_ != nullptr) window_->setRootViewController(nullptr);
}

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
  bool startedBefore = false;
  {
    const LockGuard lock(mutex_);
    startedBefore = std::exchange(state_.isPopupStart, true);
    if (!startedBefore) {
      state_.popUrl = baseUrl;
      state_.gameID = gameID;
      state_.gameKey = gameKey;
    }
  }
  if (startedBefore) return debug("Popup had started");
  requestRemoteConfig();
}

void ZOVKPopupManager::setChannelID(std::int32_t channelID, const std::string& openID,
                                    const std::string& token, const std::string& jwtToken) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::setChannelID");
  debug("Set state ID1:%d ID2:%@ ID3:%@ ID4:%@", channelID, openID, token, jwtToken);
  loginState_->set({channelID, openID, token, jwtToken});
}

PopupListPointer ZOVKPopupManager::list(PopupListPointer State::*field) const {
  const LockGuard lock(mutex_);
  return state_.*field;
}

void ZOVKPopupManager::setList(PopupListPointer State::*field, PopupList popups) {
  auto snapshot = std::make_shared<const PopupList>(std::move(popups));
  const LockGuard lock(mutex_);
  (state_.*field).swap(snapshot);
}

PopupList ZOVKPopupManager::remotePopupArr() const {
  return *list(&State::remotePopupArr);
}
PopupList ZOVKPopupManager::localPopupArr() const {
  return *list(&State::localPopupArr);
}
PopupList ZOVKPopupManager::mergePopupArr() const {
  return *list(&State::mergePopupArr);
}
void ZOVKPopupManager::setRemotePopupArr(PopupList popups) {
  setList(&State::remotePopupArr, std::move(popups));
}
void ZOVKPopupManager::setLocalPopupArr(PopupList popups) {
  setList(&State::localPopupArr, std::move(popups));
}
void ZOVKPopupManager::setMergePopupArr(PopupList popups) {
  setList(&State::mergePopupArr, std::move(popups));
}

bool ZOVKPopupManager::isPopupStart() const {
  const LockGuard lock(mutex_);
  return state_.isPopupStart;
}
bool ZOVKPopupManager::isPopuping() const {
  const LockGuard lock(mutex_);
  return state_.isPopuping;
}
bool ZOVKPopupManager::isHeldBack() const {
  const LockGuard lock(mutex_);
  return state_.isHeldBack;
}
std::optional<std::string> ZOVKPopupManager::policyPublishTime() const {
  const LockGuard lock(mutex_);
  return state_.policyPublishTime;
}
std::deque<QueueEntry> ZOVKPopupManager::popupCache() const {
  const LockGuard lock(mutex_);
  return state_.popupCache;
}
double ZOVKPopupManager::startTime() const {
  const LockGuard lock(mutex_);
  return state_.startTime;
}
double ZOVKPopupManager::serverTime() const {
  const LockGuard lock(mutex_);
  return state_.serverTime;
}
double ZOVKPopupManager::requestTime() const {
  const LockGuard lock(mutex_);
  return state_.requestTime;
}
std::string ZOVKPopupManager::popUrl() const {
  const LockGuard lock(mutex_);
  return state_.popUrl;
}
std::string ZOVKPopupManager::gameID() const {
  const LockGuard lock(mutex_);
  return state_.gameID;
}
std::string ZOVKPopupManager::gameKey() const {
  const LockGuard lock(mutex_);
  return state_.gameKey;
}

}  // namespace zovk
