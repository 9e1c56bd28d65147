#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/helper/HelperInspector.h"
#include "support/HostFixture.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// A game at 60 frames a second with popups on a real screen, a player with a pointer, and an eye
/// on what its pumps cost. Debug lines are off, as in a game that ships.
class HostileScreen : public HostFixture {
 protected:
  using Seconds = std::chrono::duration<double>;

  /// Writes the bundle and sets the popups up.
  void start();
  /// One frame: a pump, and the rest of the frame's time waiting for something to pump.
  void playFrame();
  /// Plays until `done`; false when it is not within `bound`.
  bool playUntil(const std::function<bool()>& done, std::chrono::milliseconds bound);
  /// Plays on after an answer until the popup has left the screen and the helper has nothing to do.
  void settle();
  /// Presses the cross with the real pointer; the time until the game had its answer. The trial
  /// fails when none comes within ten seconds.
  Seconds pressTheCross();
  void forgetPumps() { longestPump_ = {}; }
  /// The longest processor time that a pump took.
  Seconds longestPump() const { return longestPump_; }
  /// Of the game's own process.
  static double megabytes();
  HelperInspector& screen();

 private:
  std::shared_ptr<HostedPlatform> platform_;
  Seconds longestPump_{};
};

}  // namespace zovk
