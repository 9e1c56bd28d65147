#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// The window of the popups, and the timer that checks whether it has the keyboard. Main thread
/// only.
class PopupWindow {
 public:
  explicit PopupWindow(std::shared_ptr<Platform> platform) : platform_(std::move(platform)) {}
  ~PopupWindow();
  PopupWindow(const PopupWindow&) = delete;
  PopupWindow& operator=(const PopupWindow&) = delete;

  /// Makes a clear window as large as the screen, and replaces the earlier one.
  void open();
  /// Removes the controller from the window, and releases both. May be repeated.
  void close();
  /// Returns the window; null if there is none.
  const std::shared_ptr<Window>& window() const { return window_; }

  /// Calls `check` at once and then every 100 ms, until `stopChecking`; keeps it until then. Has no
  /// effect if a check is already running.
  void startChecking(std::function<void()> check);
  void stopChecking();
  /// Returns the timer; null while nothing is checked.
  const std::shared_ptr<Timer>& timer() const { return timer_; }

 private:
  std::shared_ptr<Platform> platform_;
  std::shared_ptr<Window> window_;
  std::shared_ptr<Timer> timer_;
};

}  // namespace zovk
