#pragma once

#include <chrono>
#include <utility>

namespace zovk {

/// Decides how soon another helper may be started after one was given up: at once the first time,
/// then after a pause that doubles each time. So a helper that cannot run does not cost a process
/// for every request. One thread at a time.
class HelperBackOff {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  static constexpr std::chrono::seconds kShortest{1};
  static constexpr std::chrono::seconds kLongest{60};

  bool mayStart(TimePoint now) const { return !held_ || now >= next_; }
  void gaveUp(TimePoint now);
  void wentWell() { *this = {}; }
  /// Returns true once until a helper works again: the caller then logs that it was refused.
  bool saysSo() { return !std::exchange(said_, true); }

 private:
  bool held_ = false;
  bool said_ = false;
  std::chrono::seconds pause_{0};
  TimePoint next_{};
};

}  // namespace zovk
