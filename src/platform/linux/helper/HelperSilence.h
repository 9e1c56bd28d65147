#pragma once

#include <chrono>

namespace zovk {

/// Measures how long a helper has sent nothing while the game looked for it. A game that stops
/// looking, in a debugger or on a machine that sleeps, proves nothing about its helper; so a pause
/// between two looks counts only up to a limit. One thread at a time.
class HelperSilence {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;

  HelperSilence(Duration bound, Duration longestGap) : bound_(bound), longestGap_(longestGap) {}

  void begin(TimePoint now);
  void heard() { silent_ = {}; }
  /// Counts a look of the game. Returns whether the silence has lasted too long.
  bool isTooLong(TimePoint now);

 private:
  const Duration bound_;
  const Duration longestGap_;
  TimePoint looked_{};
  Duration silent_{};
};

}  // namespace zovk
