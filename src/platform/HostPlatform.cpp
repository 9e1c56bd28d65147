#include "platform/HostPlatform.h"

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

// Never destroyed, so that late calls while the process exits find it in one piece.
struct HostThread {
  Mutex mutex;
  std::optional<std::thread::id> id ZOVK_GUARDED_BY(mutex);
};

HostThread& hostThread() {
  static auto* const instance = new HostThread;
  return *instance;
}

}  // namespace

bool isHostThread() {
  const LockGuard lock(hostThread().mutex);
  return hostThread().id == std::this_thread::get_id();
}

void setHostThread(std::optional<std::thread::id> mainThread) {
  const LockGuard lock(hostThread().mutex);
  hostThread().id = mainThread;
}

std::shared_ptr<Platform> hostPlatform() {
  return isHostThread() ? currentPlatform() : nullptr;
}

}  // namespace zovk
