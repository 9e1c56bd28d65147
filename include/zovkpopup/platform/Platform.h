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

/// Receives finished log lines, from any thread, one after another. Cannot fail.
class PlatformLog {
 public:
  virtual ~PlatformLog() = default;
  virtual void writeLine(std::string_view line) = 0;
};

/// Everything the engine needs from the world around it. Each interface says on which threads it
/// may be used. The maker of a platform owns the objects behind the references, and keeps them
/// until nothing uses the platform any more.
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
