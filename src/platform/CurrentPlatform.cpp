#include "zovkpopup/platform/CurrentPlatform.h"

#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {
namespace {

// Never destroyed, so that late calls while the process exits find it in one piece.
struct Current {
  Mutex mutex;
  std::shared_ptr<Platform> platform ZOVK_GUARDED_BY(mutex);
  std::function<void()> makeDefault ZOVK_GUARDED_BY(mutex);
};

Current& current() {
  static auto* const instance = new Current;
  return *instance;
}

}  // namespace

std::shared_ptr<Platform> currentPlatform() {
  std::function<void()> makeDefault;
  {
    const LockGuard lock(current().mutex);
    if (current().platform != nullptr) return current().platform;
    makeDefault = current().makeDefault;
  }
  if (makeDefault) makeDefault();
  const LockGuard lock(current().mutex);
  return current().platform;
}

void setCurrentPlatform(std::shared_ptr<Platform> platform) {
  const LockGuard lock(current().mutex);
  current().platform.swap(platform);
}

void setDefaultPlatform(std::function<void()> makeAndSet) {
  const LockGuard lock(current().mutex);
  current().makeDefault = std::move(makeAndSet);
}

}  // namespace zovk
