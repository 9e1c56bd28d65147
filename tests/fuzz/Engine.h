#pragma once

#include <memory>

#include "engine/ZOVKPopupManager.h"
#include "fuzz/Fuzz.h"
#include "platform/memory/MemoryPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

inline constexpr const char* kCacheDirectory = "/home/player/Library/Caches/ZOVKPopup/";
inline constexpr const char* kBundleDirectory = "/app/ZOVKPopupResource.bundle/";

/// The engine for one input, on a platform in memory. The first use makes it, so that files can be
/// written before.
class Engine {
 public:
  Engine() { setCurrentPlatform(memory_->shared()); }
  ~Engine() {
    if (auto* const manager = ZOVKPopupManager::sharedInstanceNoSynch()) {
      manager->stopCheckKeyWindow();
      manager->releasePopupWindow();
    }
    memory_->shutDown();
    ZOVKPopupManager::purgeSharedInstance();
    ZOVKPopupFileManager::purgeSharedInstance();
    setCurrentPlatform(nullptr);
  }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  MemoryPlatform& memory() { return *memory_; }
  ZOVKPopupManager* operator->() { return ZOVKPopupManager::sharedInstance(); }

 private:
  const std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
};

}  // namespace zovk
