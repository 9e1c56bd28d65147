#include "zovkpopup/Host.h"

#include <thread>
#include <utility>

#include "engine/ZOVKPopupManager.h"
#include "host/LoggerSetUp.h"
#include "platform/HostPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/CurrentPlatform.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {
namespace {

/// The state of the host at one moment.
struct HostState {
  std::shared_ptr<HostedPlatform> platform;
  bool shutDown = false;
};

/// Changed by the main thread, read by any.
struct Host {
  mutable Mutex mutex;
  HostState state ZOVK_GUARDED_BY(mutex);
  bool pumping = false;  // main thread only

  HostState now() const {
    const LockGuard lock(mutex);
    return state;
  }
  HostState exchange(HostState next) {
    const LockGuard lock(mutex);
    return std::exchange(state, std::move(next));
  }
};

Host& host() {
  static auto* const instance = new Host;
  return *instance;
}

bool install(std::shared_ptr<HostedPlatform> platform) {
  // The interfaces stay for as long as someone holds them.
  const std::shared_ptr<Platform> interfaces(platform, &platform->interfaces());
  setUpLogger(interfaces, platform->sharedLog());
  host().exchange({std::move(platform), false});
  setHostThread(std::this_thread::get_id());
  host().pumping = false;
  setCurrentPlatform(interfaces);
  return true;
}

void installDefault() {
  const HostState now = host().now();
  if (now.platform != nullptr || now.shutDown) return;
  if (auto platform = makeDefaultPlatform({})) install(std::move(platform));
}

// The platform of a host that is set up, on its main thread; null otherwise, with an error line on
// another thread.
std::shared_ptr<HostedPlatform> platformFor(const char* operation) {
  HostState now = host().now();
  if (now.platform == nullptr || isHostThread()) return now.platform;
  logError("ZOVKPopupHost::%s was called on another thread than the main thread", operation);
  return nullptr;
}

// Says that a pump is under way, also when a callback throws through it.
struct Pumping {
  Pumping() { host().pumping = true; }
  ~Pumping() { host().pumping = false; }
  Pumping(const Pumping&) = delete;
  Pumping& operator=(const Pumping&) = delete;
};

// The engine, for its main thread; null, with an error line, when there is none.
ZOVKPopupManager* engineFor(const char* operation) {
  if (host().now().platform != nullptr && platformFor(operation) == nullptr) return nullptr;
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

const bool kDefaultIsKnown = (setDefaultPlatform(installDefault), true);

}  // namespace

bool ZOVKPopupHost::setUp(const ZOVKPopupHostSettings& settings) {
  if (host().now().platform != nullptr) return setUp(std::shared_ptr<HostedPlatform>());
  return setUp(makeDefaultPlatform(settings));
}

bool ZOVKPopupHost::setUp(std::shared_ptr<HostedPlatform> platform) {
  if (host().now().platform != nullptr) {
    logError("ZOVKPopupHost::setUp was called before, or the popups are already in use");
    return false;
  }
  if (platform == nullptr || !kDefaultIsKnown) {
    logError("ZOVKPopupHost::setUp found no platform");
    return false;
  }
  return install(std::move(platform));
}

void ZOVKPopupHost::pump(std::chrono::microseconds budget) {
  const auto platform = platformFor("pump");  // kept: a callback may shut down
  if (platform == nullptr || host().pumping) return;
  const Pumping pumping;
  platform->pump(budget);
}

int ZOVKPopupHost::pollDescriptor() {
  const auto platform = host().now().platform;
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
  host().exchange({nullptr, true});
  setHostThread(std::nullopt);
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
