#include "engine/Installation.h"

#include <thread>
#include <utility>

#include "engine/LoggerSetUp.h"
#include "platform/HostPlatform.h"
#include "support/Guarded.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

/// Never destroyed, so that late calls while the process exits find it in one piece.
Guarded<Installation>& current() {
  static auto* const instance = new Guarded<Installation>;
  return *instance;
}

}  // namespace

Installation Installation::now() {
  return current().get();
}

void install(std::shared_ptr<HostedPlatform> platform) {
  // The interfaces stay for as long as someone holds them.
  const std::shared_ptr<Platform> interfaces(platform, &platform->interfaces());
  setUpLogger(interfaces, platform->sharedLog());
  current().set({std::move(platform), false});
  setHostThread(std::this_thread::get_id());
  setCurrentPlatform(interfaces);
}

void installLinked() {
  if (currentPlatform() != nullptr) return;
  const Installation installed = Installation::now();
  if (installed.platform != nullptr || installed.wasShutDown) return;
  if (auto platform = makeDefaultPlatform({})) install(std::move(platform));
}

void uninstall() {
  current().set({nullptr, true});
  setHostThread(std::nullopt);
}

}  // namespace zovk
