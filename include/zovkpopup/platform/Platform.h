#pragma once

#include <string_view>

#include <zovkpopup/platform/Bundles.h>
#include <zovkpopup/platform/Clock.h>
#include <zovkpopup/platform/Device.h>
#include <zovkpopup/platform/FileSystem.h>
#include <zovkpopup/platform/MainQueue.h>
#include <zovkpopup/platform/SettingsStore.h>
#include <zovkpopup/platform/Timers.h>
#include <zovkpopup/platform/UrlSession.h>
#include <zovkpopup/platform/UserInterface.h>

namespace zovk {

/// Takes finished log lines, from any thread, one after another. It cannot fail.
class PlatformLog {
 public:
  virtual ~PlatformLog() = default;
  virtual void writeLine(std::string_view line) = 0;
};

/// All that the engine needs of the world around it. Each interface says on which threads it may
/// be used. Whoever makes a platform owns what the references stand for and keeps it until
/// everything that was handed the platform is gone.
struct Platform {
  PlatformLog& log;
  MainQueue& mainQueue;
  Timers& timers;
  Clock& clock;
  FileSystem& files;
  Bundles& bundles;
  SettingsStore& settings;
  Device& device;
  UrlSession& urlSession;
  UserInterface& userInterface;
};

}  // namespace zovk
