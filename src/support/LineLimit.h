#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// Limits one kind of log line to a number a second, by default one, for lines that a page, a file
/// or a service can cause as often as it likes. Before you write the line, ask this object and
/// write what it returns: the line, with the number of lines held back since the last one, or
/// nothing. Any thread. The clock is called without a lock held.
class LineLimit {
 public:
  /// Returns seconds that never go back, counted from any start.
  using Clock = std::function<double()>;

  /// Allows `perSecond` lines, at least one, in the second after the first of them.
  explicit LineLimit(Clock clock = steadySeconds, std::size_t perSecond = 1)
      : clock_(std::move(clock)), perSecond_(perSecond) {}

  /// Returns the text to write now, or nothing if this line is held back. `count` is how many lines
  /// it stands for, at least one.
  std::optional<std::string> line(std::string text, std::size_t count = 1);
  /// Returns the last line that was held back, with the number of the others, or nothing if there
  /// is none. Call it when no further line may come, so that none goes uncounted. A new second
  /// begins.
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
