#include "host/ZOVKPopupHost.h"

#include <thread>
#include <utility>

#include "engine/ZOVKPopupManager.h"
#include "host/HostPlatform.h"
#include "host/LoggerSetUp.h"
#include "platform/CurrentPlatform.h"
#include "platform/HostedPlatform.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {
namespace {

// Main thread only, but for the default platform, which the main thread's first call makes.
struct Host {
  std::shared_ptr<HostedPlatform> platform;
  std::thread::id mainThread;
  bool shutDown = false;
  bool pumping = false;
};

Host& host() {
  static auto* const instance = new Host;
  return *instance;
}

bool install(std::shared_ptr<HostedPlatform> platform) {
  // The interfaces stay for as long as someone holds them.
  const std::shared_ptr<Platform> interfaces(platform, &platform->interfaces());
  setUpLogger(interfaces, platform->sharedLog());
  host() = {std::move(platform), std::this_thread::get_id()};
  setCurrentPlatform(interfaces);
  return true;
}

void installDefault() {
  if (host().platform != nullptr || host().shutDown) return;
  if (auto platform = makeDefaultPlatform({})) install(std::move(platform));
}

// True on the main thread of a host that is set up; says so once more when it is another thread.
bool isOnMainThread(const char* operation) {
  if (host().platform == nullptr) return false;
  if (host().mainThread == std::this_thread::get_id()) return true;
  logError("ZOVKPopupHost::%s was called on another thread than the main thread", operation);
  return false;
}

// The engine, for its main thread; null, with an error line, when there is none.
ZOVKPopupManager* engineFor(const char* operation) {
  if (host().platform != nullptr && !isOnMainThread(operation)) return nullptr;
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

std::shared_ptr<Platform> hostPlatform() {
  const bool ownThread = host().mainThread == std::this_thread::get_id();
  return host().platform != nullptr && ownThread ? currentPlatform() : nullptr;
}

bool ZOVKPopupHost::setUp(const ZOVKPopupHostSettings& settings) {
  if (host().platform != nullptr) return setUp(std::shared_ptr<HostedPlatform>());
  return setUp(
      makeDefaultPlatform({settings.applicationId, settings.resourceDirectory,
                           settings.dataDirectory, settings.helperPath, settings.nativeWindow,
                           settings.certificateAuthority, settings.logSink}));
}

bool ZOVKPopupHost::setUp(std::shared_ptr<HostedPlatform> platform) {
  if (host().platform != nullptr) {
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
  if (!isOnMainThread("pump") || host().pumping) return;
  const auto platform = host().platform;  // a callback may shut down
  host().pumping = true;
  platform->pump(budget);
  host().pumping = false;
}

int ZOVKPopupHost::pollDescriptor() {
  return host().platform != nullptr ? host().platform->pollDescriptor() : -1;
}

void ZOVKPopupHost::gameWindowDidBecomeKey() {
  if (isOnMainThread("gameWindowDidBecomeKey")) host().platform->gameWindowDidBecomeKey();
}

void ZOVKPopupHost::gameWindowDidResignKey() {
  if (isOnMainThread("gameWindowDidResignKey")) host().platform->gameWindowDidResignKey();
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
  if (!isOnMainThread("shutDown")) return;
  const auto platform = std::exchange(host().platform, nullptr);
  host().shutDown = true;
  if (auto* const manager = ZOVKPopupManager::sharedInstanceNoSynch()) {
    manager->setHooks({});
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
