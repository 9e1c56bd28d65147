#pragma once

#include <functional>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Looks half a second after a window was shown whether it came up, and tells once when it did not.
/// A window that is drawn late because this process is slow is given more time: nobody but itself
/// is to blame.
class ShowWatch {
 public:
  enum class State { kUp, kSlow, kWithoutKeyboard, kStuck };
  struct Duty {
    std::function<State()> look;           ///< How far the window is.
    std::function<void()> askForKeyboard;  ///< Once, before the window counts as stuck for it.
    std::function<void()> stuck;           ///< May begin the watch anew.
  };
  explicit ShowWatch(Duty duty);
  ShowWatch(const ShowWatch&) = delete;
  ShowWatch& operator=(const ShowWatch&) = delete;

  void begin();
  /// Something changed: ends the watch if the window is up now.
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
