#include "zovkpopup/platform/CurrentPlatform.h"

#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {
namespace {

// Never destroyed, so that late calls while the process exits find it in one piece.
struct Current {
  Mutex mutex;
  std::shared_ptr<Platform> platform ZOVK_GUARDED_BY(mutex);
};

Current& current() {
  static auto* const instance = new Current;
  return *instance;
}

}  // namespace

std::shared_ptr<Platform> currentPlatform() {
  const LockGuard lock(current().mutex);
  return current().platform;
}

void setCurrentPlatform(std::shared_ptr<Platform> platform) {
  const LockGuard lock(current().mutex);
  current().platform.swap(platform);
}

}  // namespace zovk
