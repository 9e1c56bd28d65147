#pragma once

#include <string>

#include "zovkpopup/platform/Device.h"
#include "zovkpopup/platform/Geometry.h"

namespace zovk {

/// Facts about this machine and application. How the device is held is unknown unless the helper
/// finds a sensor. The popup's window shape stands for how the interface stands.
class LinuxDevice : public Device {
 public:
  LinuxDevice(std::string homeDirectory, std::string applicationId,
              std::string machineIdPath = "/etc/machine-id");

  std::string homeDirectory() const override { return homeDirectory_; }
  /// Derived from the machine and the application, without giving the machine's number away.
  /// A machine without a number gets another random one from every call.
  std::optional<std::string> identifierForVendor() const override;
  int systemMajorVersion() const override { return 12; }
  std::string appStoreHost() const override { return "flathub.org"; }
  Orientation orientation() const override { return orientation_; }
  Orientation statusBarOrientation() const override { return statusBarOrientation_; }

  /// How the device is held, as its sensor tells. Main thread.
  void setOrientation(Orientation orientation) { orientation_ = orientation; }
  /// The size that the popup's window was given. Main thread. An empty size tells nothing.
  void setWindowSize(const Size& size);

 private:
  const std::string homeDirectory_;
  const std::string applicationId_;
  const std::string machineIdPath_;
  Orientation orientation_ = Orientation::kUnknown;
  Orientation statusBarOrientation_ = Orientation::kUnknown;
};

}  // namespace zovk
