#pragma once

#include <chrono>

namespace zovk {

/// Measures how long a helper has given no sign of life while the game looked for one. A game that
/// stops looking, in a debugger or on a machine that sleeps, says nothing about its helper: so much
/// time at most counts between two looks. One thread at a time.
class HelperSilence {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;

  HelperSilence(Duration bound, Duration longestGap) : bound_(bound), longestGap_(longestGap) {}

  void begin(TimePoint now);
  void heard() { silent_ = {}; }
  /// The game looks. Whether the silence has lasted too long.
  bool isTooLong(TimePoint now);

 private:
  const Duration bound_;
  const Duration longestGap_;
  TimePoint looked_{};
  Duration silent_{};
};

}  // namespace zovk
