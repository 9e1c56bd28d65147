#pragma once

#include <optional>
#include <string>

namespace zovk {

enum class Orientation {
  kUnknown,
  kPortrait,
  kPortraitUpsideDown,
  kLandscapeLeft,
  kLandscapeRight,
  kFaceUp,
  kFaceDown,
};

/// Facts about the device and the application. Any thread, except for the two orientations, which
/// are for the main thread. Calls never block and call nothing back. Callers own the texts. Unknown
/// facts are unknown or absent.
class Device {
 public:
  virtual ~Device() = default;
  /// Returns the application's home directory, without a trailing slash.
  virtual std::string homeDirectory() const = 0;
  /// Returns an identifier of this vendor on this device: 36 characters, upper-case hexadecimal,
  /// 8-4-4-4-12.
  virtual std::optional<std::string> identifierForVendor() const = 0;
  virtual int systemMajorVersion() const = 0;
  /// Returns the host name of the application store. Its addresses are always opened outside.
  virtual std::string appStoreHost() const = 0;
  /// Returns how the device is held.
  virtual Orientation orientation() const = 0;
  /// Returns the orientation of the user interface: portrait, landscape or unknown.
  virtual Orientation statusBarOrientation() const = 0;
};

}  // namespace zovk
