#pragma once

#include <memory>

#include "platform/linux/helper/HelperUserInterface.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "platform/linux/settings/SqliteSettings.h"
#include "platform/linux/system/LinuxBundles.h"
#include "platform/linux/system/LinuxDevice.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "platform/linux/system/LinuxTimers.h"
#include "platform/linux/system/PosixFileSystem.h"
#include "platform/linux/system/StandardErrorLog.h"
#include "platform/linux/system/SystemClock.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The platform on Linux. The thread that makes it is the main thread. The constructor throws
/// std::system_error if the process has no descriptors left.
class LinuxPlatform final : public HostedPlatform {
 public:
  explicit LinuxPlatform(const ZOVKPopupHostSettings& settings);
  ~LinuxPlatform() override;

  Platform& interfaces() override { return interfaces_; }
  std::shared_ptr<PlatformLog> sharedLog() const override { return log_; }
  void pump(std::chrono::microseconds budget) override;
  int pollDescriptor() const override { return shutDown_ ? -1 : queue_.pollDescriptor(); }
  void gameWindowDidBecomeKey() override { userInterface_.gameWindowDidBecomeKey(); }
  void gameWindowDidResignKey() override { userInterface_.gameWindowDidResignKey(); }
  void gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName,
                       const std::string& leaveName) override {
    userInterface_.gamePadDidPress(press, pressName, leaveName);
  }
  void gameWindowDidResize(int width, int height) override {
    userInterface_.gameWindowDidResize(width, height);
  }
  void shutDown() override;

 private:
  const std::shared_ptr<StandardErrorLog> log_;
  LinuxMainQueue queue_;
  LinuxTimers timers_{queue_};
  SystemClock clock_;
  PosixFileSystem files_;
  LinuxBundles bundles_;
  LinuxDevice device_;
  SqliteSettings settings_;
  CurlUrlSession urlSession_;
  HelperUserInterface userInterface_;
  Platform interfaces_;
  bool shutDown_ = false;
};

}  // namespace zovk
