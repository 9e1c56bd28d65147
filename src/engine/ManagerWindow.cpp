#include "engine/ZOVKPopupManager.h"

namespace zovk {
namespace {

constexpr std::chrono::milliseconds kKeyWindowInterval{100};

}  // namespace

void ZOVKPopupManager::initPopupWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::initPopupWindow");
  debug("Init Popup window");
  window_ = platform_->userInterface.makeWindow(platform_->userInterface.mainScreenBounds());
  window_->setBackgroundColor(Color::clear());
}

void ZOVKPopupManager::releasePopupWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::releasePopupWindow");
  debug("Release Popup window");
  if (window_ == nullptr) return;
  const auto window = std::exchange(window_, nullptr);
  window->setRootViewController(nullptr);
}

void ZOVKPopupManager::startCheckKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::startCheckKeyWindow");
  debug("Start check key window");
  if (timer_ != nullptr) return;
  // The timer keeps the engine alive until the check is stopped.
  timer_ = platform_->timers.scheduleRepeating(
      kKeyWindowInterval, [self = shared_from_this()] { self->makePopupToKeyWindow(); });
  timer_->fire();
}

void ZOVKPopupManager::makePopupToKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::makePopupToKeyWindow");
  if (window_ != nullptr && window_->isKeyWindow()) return;
  debug("Make Popup to key window");
  if (window_ != nullptr) window_->makeKeyAndVisible();
}

void ZOVKPopupManager::stopCheckKeyWindow() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::stopCheckKeyWindow");
  debug("Stop check key window");
  if (timer_ != nullptr) timer_->invalidate();
  timer_ = nullptr;
}

}  // namespace zovk
