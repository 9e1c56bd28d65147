#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Answer.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// The latest requests whose signature was refused, with what the service signed. Any thread.
class Refusals {
 public:
  static constexpr std::size_t kMost = 100;
  /// Longer texts are cut off: a body may have a megabyte.
  static constexpr std::size_t kLongestText = 8192;

  void add(const std::string& path, const Answer& answer);
  /// Latest first.
  boost::json::array list() const;

 private:
  mutable Mutex mutex_;
  std::deque<boost::json::object> latest_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
