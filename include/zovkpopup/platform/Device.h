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

/// Facts about the device and the application. Any thread, except the two orientations, which
/// belong to the main thread; calls never block and nothing is called back. Callers own the texts.
/// What the device does not know is unknown or absent.
class Device {
 public:
  virtual ~Device() = default;
  /// The application's home directory, without a trailing slash.
  virtual std::string homeDirectory() const = 0;
  /// Identifies this vendor on this device: 36 characters, upper-case hexadecimal, 8-4-4-4-12.
  virtual std::optional<std::string> identifierForVendor() const = 0;
  virtual int systemMajorVersion() const = 0;
  /// The host name of the application store, which is always opened outside.
  virtual std::string appStoreHost() const = 0;
  /// How the device is held.
  virtual Orientation orientation() const = 0;
  /// How the user interface stands: portrait, landscape or unknown.
  virtual Orientation statusBarOrientation() const = 0;
};

}  // namespace zovk
