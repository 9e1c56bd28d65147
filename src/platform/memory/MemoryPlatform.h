#pragma once

#include <memory>

#include "platform/memory/MemoryBundles.h"
#include "platform/memory/MemoryDevice.h"
#include "platform/memory/MemoryFileSystem.h"
#include "platform/memory/MemoryLog.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemorySettings.h"
#include "platform/memory/MemoryUrlSession.h"
#include "platform/memory/MemoryUserInterface.h"
#include "zovkpopup/platform/HostedPlatform.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// A whole platform in memory, in virtual time. The thread that makes it is its main thread. It has
/// the directories "/app" with its resource bundle, "/tmp", and the home directory's
/// "Library/Caches".
class MemoryPlatform : public std::enable_shared_from_this<MemoryPlatform> {
 public:
  MemoryPlatform();
  ~MemoryPlatform();
  MemoryPlatform(const MemoryPlatform&) = delete;
  MemoryPlatform& operator=(const MemoryPlatform&) = delete;

  MemoryLog log;
  MemoryScheduler scheduler;
  MemoryFileSystem files;
  MemoryBundles bundles{files};
  MemorySettings settings;
  MemoryDevice device;
  MemoryUrlSession urlSession{files};
  MemoryUserInterface userInterface{scheduler};
  Platform interfaces{log,     scheduler, scheduler, scheduler,  files,
                      bundles, settings,  device,    urlSession, userInterface};

  /// Returns the interfaces in a shared pointer. It keeps this object alive if make_shared made it;
  /// otherwise the maker must keep it.
  std::shared_ptr<Platform> shared();
  /// Returns the log, kept alive in the same way.
  std::shared_ptr<PlatformLog> sharedLog() { return {shared(), &log}; }
  /// Stops everything: no request is answered and no task run any more. May be repeated.
  void shutDown();

  /// Delivers answered requests and runs ready tasks until neither is left.
  void settle();
};

/// The memory platform for a host. `pump` runs what is due at the scheduler's own time, which only
/// `memory().scheduler` moves.
class MemoryHostedPlatform final : public HostedPlatform {
 public:
  MemoryPlatform& memory() { return *memory_; }
  Platform& interfaces() override { return memory_->interfaces; }
  std::shared_ptr<PlatformLog> sharedLog() const override { return memory_->sharedLog(); }
  void pump(std::chrono::microseconds budget) override { memory_->scheduler.runReady(budget); }
  int pollDescriptor() const override { return -1; }
  void gameWindowDidBecomeKey() override { memory_->userInterface.otherWindowTakesKey(); }
  void gameWindowDidResignKey() override { memory_->userInterface.otherWindowLosesKey(); }
  void gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName,
                       const std::string& leaveName) override {
    memory_->userInterface.padPressed({press, pressName, leaveName});
  }
  void shutDown() override { memory_->shutDown(); }

 private:
  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
};

}  // namespace zovk
