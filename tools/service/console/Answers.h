#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Database.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// Selects answers; an empty or zero member does not limit them.
struct AnswerFilter {
  std::int64_t popup = 0;  ///< pop_id
  std::int64_t from = 0;   ///< Seconds since 1970; `until` is no longer included.
  std::int64_t until = 0;
  std::string text;  ///< A part of the answer's text, in upper or lower case.
  bool utc = false;  ///< Days are those of UTC, not of this machine's time zone.
};

/// The players' answers, read from the reports. Any thread.
class Answers {
 public:
  static constexpr std::size_t kMostTotals = 50;
  static constexpr std::size_t kMostExported = 10'000;
  static constexpr std::size_t kMostBytesExported = 16 << 20;

  explicit Answers(const std::string& file);

  /// Returns their number, by popup, by day and by text, and the latest few.
  boost::json::object totals(const AnswerFilter& filter) const;
  /// Returns the latest ones, latest first, up to a count and a size.
  boost::json::array list(const AnswerFilter& filter, std::size_t most) const;
  /// Returns the same as comma-separated values, with a line of names.
  std::string csv(const AnswerFilter& filter) const;

 private:
  boost::json::array groups(const std::string& columns, const std::string& order,
                            const AnswerFilter& filter) const ZOVK_REQUIRES(mutex_);

  mutable Mutex mutex_;
  Database database_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
