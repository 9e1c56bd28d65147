#pragma once

#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Database.h"
#include "service/SignatureCheck.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// The reports that came in, kept in an SQLite file over restarts. Any thread. Throws
/// std::runtime_error when the file cannot be used.
class Reports {
 public:
  explicit Reports(const std::string& path);

  /// Keeps a report and returns it as it is listed. `body` is JSON.
  boost::json::object add(const Caller& caller, const std::string& name, const std::string& body);
  /// The latest thousand with a number above `after`, oldest first.
  boost::json::array list(std::int64_t after) const;

 private:
  mutable Mutex mutex_;
  Database database_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
