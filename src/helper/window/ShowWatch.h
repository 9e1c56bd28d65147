#pragma once

#include <functional>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Checks half a second after a window was shown whether it came up, and reports once if it did
/// not. A window that is drawn late because this process is slow gets more time, and so does one
/// that is not at its place because the window manager is slow.
class ShowWatch {
 public:
  enum class State { kUp, kSlow, kElsewhere, kWithoutKeyboard, kStuck };
  struct Duty {
    std::function<State()> look;           ///< Returns how far the window has come.
    std::function<void()> askForKeyboard;  ///< Called once, before the window counts as stuck.
    std::function<void(State)> stuck;      ///< Told how far it came. May start the watch again.
  };
  explicit ShowWatch(Duty duty);
  ShowWatch(const ShowWatch&) = delete;
  ShowWatch& operator=(const ShowWatch&) = delete;

  void begin();
  /// Reports a change: ends the watch if the window is up now.
  void notice();
  void end();
  bool active() const { return timer_.active(); }

 private:
  static gboolean onDeadline(gpointer self);
  static gboolean onIdle(gpointer self);
  void decide();
  void lookAgain();

  const Duty duty_;
  int looks_ = 0;
  bool asked_ = false;
  SourceGuard timer_;
};

}  // namespace zovk::helper
