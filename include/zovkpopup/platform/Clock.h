#pragma once

namespace zovk {

/// The two clocks of the device. Any thread; calls nothing back, owns nothing and cannot fail.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Returns the seconds since 1970 by the device's clock, with the fraction. May jump.
  virtual double secondsSince1970() const = 0;
  /// Returns the seconds since the device was started, with the fraction. Never goes back.
  virtual double systemUptime() const = 0;
};

}  // namespace zovk
