#include "zovkpopup/Host.h"

#include <utility>

#include "engine/Installation.h"
#include "engine/ZOVKPopupManager.h"
#include "platform/HostPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

bool pumping = false;  // main thread only

// Returns the platform of a host that is set up, on its main thread. Returns null otherwise, with
// an error line on another thread.
std::shared_ptr<HostedPlatform> platformFor(const char* operation) {
  auto platform = Installation::now().platform;
  if (platform == nullptr || isHostThread()) return platform;
  logError("ZOVKPopupHost::%s was called on another thread than the main thread", operation);
  return nullptr;
}

// Marks that a pump is under way, also while an exception leaves it.
struct Pumping {
  Pumping() { pumping = true; }
  ~Pumping() { pumping = false; }
  Pumping(const Pumping&) = delete;
  Pumping& operator=(const Pumping&) = delete;
};

// Returns the engine on its main thread. Returns null, with an error line, if there is none.
ZOVKPopupManager* engineFor(const char* operation) {
  if (Installation::now().platform != nullptr && platformFor(operation) == nullptr) return nullptr;
  auto* const manager = ZOVKPopupManager::sharedInstance();
  if (manager == nullptr) {
    logError("ZOVKPopupHost::%s: ZOVKPopup is not set up, or was shut down", operation);
  }
  return manager;
}

bool setHeldBack(const char* operation, bool heldBack) {
  auto* const manager = engineFor(operation);
  if (manager != nullptr) manager->setHeldBack(heldBack);
  return manager != nullptr;
}

}  // namespace

bool ZOVKPopupHost::setUp(const ZOVKPopupHostSettings& settings) {
  if (Installation::now().platform != nullptr) return setUp(std::shared_ptr<HostedPlatform>());
  return setUp(makeDefaultPlatform(settings));
}

bool ZOVKPopupHost::setUp(std::shared_ptr<HostedPlatform> platform) {
  if (Installation::now().platform != nullptr) {
    logError("ZOVKPopupHost::setUp was called before, or the popups are already in use");
    return false;
  }
  if (platform == nullptr) {
    logError("ZOVKPopupHost::setUp found no platform");
    return false;
  }
  install(std::move(platform));
  pumping = false;
  return true;
}

void ZOVKPopupHost::pump(std::chrono::microseconds budget) {
  const auto platform = platformFor("pump");  // kept: a callback may shut down
  if (platform == nullptr || pumping) return;
  const Pumping underWay;
  platform->pump(budget);
}

int ZOVKPopupHost::pollDescriptor() {
  const auto platform = Installation::now().platform;
  return platform != nullptr ? platform->pollDescriptor() : -1;
}

void ZOVKPopupHost::gameWindowDidBecomeKey() {
  if (const auto platform = platformFor("gameWindowDidBecomeKey"))
    platform->gameWindowDidBecomeKey();
}

void ZOVKPopupHost::gameWindowDidResignKey() {
  if (const auto platform = platformFor("gameWindowDidResignKey"))
    platform->gameWindowDidResignKey();
}

void ZOVKPopupHost::gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName,
                                    const std::string& leaveName) {
  if (const auto platform = platformFor("gamePadDidPress")) {
    platform->gamePadDidPress(press, pressName, leaveName);
  }
}

void ZOVKPopupHost::gameWindowDidResize(int width, int height) {
  if (const auto platform = platformFor("gameWindowDidResize")) {
    platform->gameWindowDidResize(width, height);
  }
}

bool ZOVKPopupHost::setHooks(const ZOVKPopupHooks& hooks) {
  auto* const manager = engineFor("setHooks");
  if (manager != nullptr) manager->setHooks(hooks);
  return manager != nullptr;
}

bool ZOVKPopupHost::holdPopups() {
  return setHeldBack("holdPopups", true);
}

bool ZOVKPopupHost::releasePopups() {
  return setHeldBack("releasePopups", false);
}

void ZOVKPopupHost::shutDown() {
  const auto platform = platformFor("shutDown");
  if (platform == nullptr) return;
  uninstall();
  if (auto* const manager = ZOVKPopupManager::sharedInstanceNoSynch()) {
    manager->setHooks({});
    manager->stopWork();
    manager->setHeldBack(true);  // a hook that shuts down may be about to be followed by a popup
    manager->stopCheckKeyWindow();
    manager->releasePopupWindow();
  }
  platform->shutDown();
  setCurrentPlatform(nullptr);
  ZOVKPopupManager::purgeSharedInstance();
  ZOVKPopupFileManager::purgeSharedInstance();
}

}  // namespace zovk
