#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "fixtures/HostFixture.h"
#include "platform/linux/helper/HelperInspector.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// A game at 60 frames a second with popups on a real screen, and a player with a pointer. It
/// measures the cost of its pumps. Debug lines are off, as in a shipped game.
class HostileScreen : public HostFixture {
 protected:
  using Seconds = std::chrono::duration<double>;

  /// Writes the bundle and sets the popups up.
  void start();
  /// Plays one frame: a pump, and then a wait for something to pump for the rest of the frame's
  /// time.
  void playFrame();
  /// Plays until `done`. Returns false if that is not within `bound`.
  bool playUntil(const std::function<bool()>& done, std::chrono::milliseconds bound);
  /// Plays on after an answer until the popup has left the screen and the helper has nothing to do.
  void settle();
  /// Presses the cross with the real pointer. Returns the time until the game had its answer;
  /// absent if the page has answered before the press. The trial fails if none comes within ten
  /// seconds.
  std::optional<Seconds> pressTheCross();
  void forgetPumps() { longestPump_ = {}; }
  /// Returns the longest processor time of a pump.
  Seconds longestPump() const { return longestPump_; }
  /// Returns the memory that the game has written.
  static double megabytes();
  HelperInspector& screen();

 private:
  std::shared_ptr<HostedPlatform> platform_;
  Seconds longestPump_{};
};

}  // namespace zovk
