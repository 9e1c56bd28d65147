#pragma once

#include <string>

#include "zovkpopup/platform/Device.h"
#include "zovkpopup/platform/Geometry.h"

namespace zovk {

/// Facts about this machine and application. The orientation of the machine is unknown unless the
/// helper finds a sensor. The shape of the popup's window decides the orientation of the interface.
class LinuxDevice : public Device {
 public:
  LinuxDevice(std::string homeDirectory, std::string applicationId,
              std::string machineIdPath = "/etc/machine-id");

  std::string homeDirectory() const override { return homeDirectory_; }
  /// Derives the identifier from the machine and the application, without revealing the machine's
  /// number. On a machine without a number, every call gives another random one.
  std::optional<std::string> identifierForVendor() const override;
  int systemMajorVersion() const override { return 12; }
  std::string appStoreHost() const override { return "flathub.org"; }
  Orientation orientation() const override { return orientation_; }
  Orientation statusBarOrientation() const override { return statusBarOrientation_; }

  /// Sets how the device is held, as its sensor reports. Main thread.
  void setOrientation(Orientation orientation) { orientation_ = orientation; }
  /// Sets the size of the popup's window. Main thread. An empty size is ignored.
  void setWindowSize(const Size& size);

 private:
  const std::string homeDirectory_;
  const std::string applicationId_;
  const std::string machineIdPath_;
  Orientation orientation_ = Orientation::kUnknown;
  Orientation statusBarOrientation_ = Orientation::kUnknown;
};

}  // namespace zovk
