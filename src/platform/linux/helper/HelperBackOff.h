#pragma once

#include <chrono>
#include <utility>

namespace zovk {

/// How soon after a helper was given up another may be started: at once the first time, then after
/// twice as long each time, so that a helper that cannot run does not cost a process for every
/// request. One thread at a time.
class HelperBackOff {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::seconds kShortest{1};
  static constexpr std::chrono::seconds kLongest{60};

  bool mayStart(TimePoint now) const { return !held_ || now >= next_; }
  void gaveUp(TimePoint now);
  void wentWell() { *this = {}; }
  /// True once until all went well: whoever is turned away says so then.
  bool saysSo() { return !std::exchange(said_, true); }

 private:
  bool held_ = false;
  bool said_ = false;
  std::chrono::seconds pause_{0};
  TimePoint next_{};
};

}  // namespace zovk
