#pragma once

#include <optional>
#include <string>

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/Device.h"

namespace zovk {

/// The facts that the device reports; all of them can be set. Any thread.
struct MemoryDeviceFacts {
  std::string homeDirectory = "/home/player";
  std::optional<std::string> identifierForVendor = "0A1B2C3D-4E5F-4678-9ABC-DEF012345678";
  int systemMajorVersion = 11;
  std::string appStoreHost = "store.example";
  Orientation orientation = Orientation::kPortrait;
  Orientation statusBarOrientation = Orientation::kPortrait;
};

class MemoryDevice final : public Device {
 public:
  std::string homeDirectory() const override { return facts().homeDirectory; }
  std::optional<std::string> identifierForVendor() const override {
    return facts().identifierForVendor;
  }
  int systemMajorVersion() const override { return facts().systemMajorVersion; }
  std::string appStoreHost() const override { return facts().appStoreHost; }
  Orientation orientation() const override { return facts().orientation; }
  Orientation statusBarOrientation() const override { return facts().statusBarOrientation; }

  MemoryDeviceFacts facts() const;
  void setHomeDirectory(const std::string& path);
  void setIdentifierForVendor(const std::optional<std::string>& identifier);
  void setSystemMajorVersion(int version);
  void setAppStoreHost(const std::string& host);
  void setOrientation(Orientation orientation);
  void setStatusBarOrientation(Orientation orientation);

 private:
  mutable Mutex mutex_;
  MemoryDeviceFacts facts_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
