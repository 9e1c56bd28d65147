#pragma once

namespace zovk {

/// The two clocks of the device. Any thread; it calls nothing back, owns nothing and cannot fail.
class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since 1970 by the device's own clock, with the fraction. May jump.
  virtual double secondsSince1970() const = 0;
  /// Seconds since the device was started, with the fraction. Never goes back.
  virtual double systemUptime() const = 0;
};

}  // namespace zovk
