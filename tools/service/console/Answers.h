#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Database.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// Which answers are meant; what is empty or 0 limits nothing.
struct AnswerFilter {
  std::int64_t popup = 0;  ///< pop_id
  std::int64_t from = 0;   ///< Seconds since 1970; `until` is no longer included.
  std::int64_t until = 0;
  std::string text;  ///< Is part of the answer's text, without regard to case.
  bool utc = false;  ///< Days are those of UTC, not of this machine's time zone.
};

/// What players answered, read from the reports. Any thread.
class Answers {
 public:
  static constexpr std::size_t kMostTotals = 50;
  static constexpr std::size_t kMostExported = 10'000;
  static constexpr std::size_t kMostBytesExported = 16 << 20;

  explicit Answers(const std::string& file);

  /// How many there are, by popup, by day and by text; and the latest few.
  boost::json::object totals(const AnswerFilter& filter) const;
  /// The latest ones, latest first, up to a count and a size.
  boost::json::array list(const AnswerFilter& filter, std::size_t most) const;
  /// The same as comma-separated values with a line of names.
  std::string csv(const AnswerFilter& filter) const;

 private:
  boost::json::array groups(const std::string& columns, const std::string& order,
                            const AnswerFilter& filter) const ZOVK_REQUIRES(mutex_);

  mutable Mutex mutex_;
  Database database_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
