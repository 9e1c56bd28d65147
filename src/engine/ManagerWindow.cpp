#include "engine/ZOVKPopupManager.h"

namespace zovk {

void ZOVKPopupManager::initPopupWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::initPopupWindow");
  debug("Init Popup window");
  popupWindow_.open();
}

void ZOVKPopupManager::releasePopupWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::releasePopupWindow");
  debug("Release Popup window");
  popupWindow_.close();
}

void ZOVKPopupManager::startCheckKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::startCheckKeyWindow");
  debug("Start check key window");
  // The check keeps the engine alive until it is stopped.
  popupWindow_.startChecking([self = shared_from_this()] { self->makePopupToKeyWindow(); });
}

void ZOVKPopupManager::makePopupToKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::makePopupToKeyWindow");
  if (window() != nullptr && window()->isKeyWindow()) return;
  debug("Make Popup to key window");
  if (window() != nullptr) window()->makeKeyAndVisible();
}

void ZOVKPopupManager::stopCheckKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::stopCheckKeyWindow");
  debug("Stop check key window");
  popupWindow_.stopChecking();
}

}  // namespace zovk
