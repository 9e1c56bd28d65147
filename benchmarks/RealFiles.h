#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "engine/ZOVKPopupManager.h"
#include "platform/linux/system/PosixFileSystem.h"
#include "platform/linux/system/SystemClock.h"
#include "platform/memory/MemoryPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

/// The memory platform with a real disk: page files in a directory that is removed at the end.
class RealFiles {
 public:
  RealFiles()
      : platform_{memory_.interfaces.log,
                  memory_.interfaces.mainQueue,
                  memory_.interfaces.timers,
                  clock_,
                  files_,
                  memory_.interfaces.bundles,
                  memory_.interfaces.settings,
                  memory_.interfaces.device,
                  memory_.interfaces.urlSession,
                  memory_.interfaces.userInterface} {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "zovkpopup-benchmark-XXXXXX").string();
    home_ = mkdtemp(pattern.data());
    std::filesystem::create_directories(home_ / "Library/Caches/ZOVKPopup");
    memory_.device.setHomeDirectory(home_.string());
    setCurrentPlatform(std::shared_ptr<Platform>(std::shared_ptr<void>(), &platform_));
  }
  ~RealFiles() {
    ZOVKPopupManager::purgeSharedInstance();
    ZOVKPopupFileManager::purgeSharedInstance();
    setCurrentPlatform(nullptr);
    std::filesystem::remove_all(home_);
  }
  RealFiles(const RealFiles&) = delete;
  RealFiles& operator=(const RealFiles&) = delete;

  std::filesystem::path cache() const { return home_ / "Library/Caches/ZOVKPopup"; }

 private:
  MemoryPlatform memory_;
  PosixFileSystem files_;
  SystemClock clock_;
  std::filesystem::path home_;
  Platform platform_;
};

}  // namespace zovk
