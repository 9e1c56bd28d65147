#pragma once

#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Database.h"
#include "service/SignatureCheck.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// The received reports, kept in an SQLite file over restarts. Any thread. Throws
/// std::runtime_error if the file cannot be used.
class Reports {
 public:
  explicit Reports(const std::string& path);

  /// Stores a report, and returns it in the form of the list. `body` is JSON.
  boost::json::object add(const Caller& caller, const std::string& name, const std::string& body);
  /// Returns the latest thousand with a number above `after`, oldest first.
  boost::json::array list(std::int64_t after) const;

 private:
  mutable Mutex mutex_;
  Database database_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
