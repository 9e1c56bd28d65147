#pragma once

#include <cstdint>

namespace zovk {

/// A window of another program, as the game's own: shown, and active at first. The bound of its
/// waits is the time-out of the test.
class OtherWindow {
 public:
  OtherWindow();
  ~OtherWindow();
  OtherWindow(const OtherWindow&) = delete;
  OtherWindow& operator=(const OtherWindow&) = delete;

  std::uint64_t id() const { return window_; }
  /// Has the window manager make it the active one.
  void activate();
  /// Waits until it gets or loses the keyboard.
  void awaitFocus(bool focused);
  /// Whether some window on the screen says that it stands before this one.
  bool hasTransient() const { return transient() != 0; }
  /// From now on also hears when the window that stands before this one leaves the screen.
  void watchTransient();
  /// Waits until it gets the keyboard; whether the watched window had left the screen by then.
  bool getsFocusAfterTransientLeft();

 private:
  std::uint64_t transient() const;

  void* display_;
  std::uint64_t window_ = 0;
};

}  // namespace zovk
