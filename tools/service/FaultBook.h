#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

enum class FaultKind {
  kDelay,         ///< The answer is late by that many milliseconds.
  kDrop,          ///< The connection closes without an answer.
  kTruncate,      ///< The announced length is that many bytes too large.
  kSlowDrip,      ///< The body comes at that many bytes a second.
  kStatus500,     ///< A server error with a page of HTML.
  kEmpty,         ///< An answer without a body.
  kNotJson,       ///< A body that is not JSON.
  kHuge,          ///< A body of that many megabytes.
  kRedirectLoop,  ///< A redirect to the same address.
  kChanged,       ///< From the n-th request on, another document of the folder.
};

/// The fault of the answers for one path.
struct Fault {
  FaultKind kind = FaultKind::kDelay;
  std::string kindName;
  std::uint64_t number = 0;  ///< Milliseconds, bytes, megabytes or requests; see the kind.
  std::string file;          ///< The other document.
  std::uint64_t times = 0;   ///< How many answers it spoils; 0 for all.
};

/// Makes a fault. Throws std::invalid_argument, with a text for the user, for an unknown kind or a
/// bad argument.
Fault makeFault(const std::string& kind, const std::string& argument, std::uint64_t times);

/// The faults in force, at most one for each path. Any thread.
class FaultBook {
 public:
  static constexpr std::size_t kMostFaults = 64;
  static constexpr std::size_t kLongestText = 1024;  ///< Of a member of a request.

  /// Sets a fault from PATH=KIND[:ARGUMENT]; throws std::invalid_argument.
  void set(const std::string& text);
  /// Sets a fault from an object with "path", "fault" and, optionally, "arg" and "times". The fault
  /// "none" removes the present one. Throws std::invalid_argument, also beyond the bounds.
  void set(const boost::json::object& request);
  /// Returns the fault for this request, and counts the request.
  std::optional<Fault> take(const std::string& path);
  boost::json::array list() const;

 private:
  struct Entry {
    Fault fault;
    std::uint64_t requests = 0;
    std::uint64_t spoilt = 0;
  };

  void put(const std::string& path, const std::string& kind, const std::string& argument,
           std::uint64_t times);

  mutable Mutex mutex_;
  std::map<std::string, Entry> entries_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
