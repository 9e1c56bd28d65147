#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// Holds one kind of log line to so many a second, by default one, for lines that a page, a file or
/// a service can cause as often as it likes. Whoever would write the line asks here and writes what
/// comes back: the line, with the number of those that were held back since the last one, or
/// nothing. Any thread. The clock is called without a lock held.
class LineLimit {
 public:
  /// Seconds that never go back, from any start.
  using Clock = std::function<double()>;

  /// `perSecond` lines, at least one, are let through in the second after the first of them.
  explicit LineLimit(Clock clock = steadySeconds, std::size_t perSecond = 1)
      : clock_(std::move(clock)), perSecond_(perSecond) {}

  /// The text to write now; absent when this line is held back. `count` is how many lines it stands
  /// for, at least one.
  std::optional<std::string> line(std::string text, std::size_t count = 1);
  /// The last line that was held back, with the number of the others; absent when none is. To be
  /// called when no further line may come, so that none goes uncounted; a new second begins.
  std::optional<std::string> rest();

  static double steadySeconds();

 private:
  const Clock clock_;
  const std::size_t perSecond_;
  Mutex mutex_;
  std::optional<double> secondBegan_ ZOVK_GUARDED_BY(mutex_);
  std::size_t left_ ZOVK_GUARDED_BY(mutex_) = 0;
  std::string last_ ZOVK_GUARDED_BY(mutex_);
  std::size_t held_ ZOVK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zovk
