#pragma once

#include <cstdint>

namespace zovk {

/// A window of another program, such as the game's: shown, and active at first. Its waits are
/// bounded by the time-out of the test.
class OtherWindow {
 public:
  OtherWindow();
  ~OtherWindow();
  OtherWindow(const OtherWindow&) = delete;
  OtherWindow& operator=(const OtherWindow&) = delete;

  std::uint64_t id() const { return window_; }
  /// Makes the window manager activate it.
  void activate();
  /// Waits until it gets or loses the keyboard.
  void awaitFocus(bool focused);
  /// Returns whether a window on the screen is declared to be in front of this one.
  bool hasTransient() const { return transient() != 0; }
  /// From now on also watches when the window in front of this one leaves the screen.
  void watchTransient();
  /// Waits until it gets the keyboard. Returns whether the watched window had left the screen by
  /// then.
  bool getsFocusAfterTransientLeft();

 private:
  std::uint64_t transient() const;

  void* display_;
  std::uint64_t window_ = 0;
};

}  // namespace zovk
