#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

enum class FaultKind {
  kDelay,         ///< The answer comes so many milliseconds late.
  kDrop,          ///< The connection closes without an answer.
  kTruncate,      ///< So many bytes more are announced than are sent.
  kSlowDrip,      ///< The body comes at so many bytes a second.
  kStatus500,     ///< A server error with a page of HTML.
  kEmpty,         ///< An answer without a body.
  kNotJson,       ///< A body that is no JSON.
  kHuge,          ///< A body of so many megabytes.
  kRedirectLoop,  ///< A redirect to the same address.
  kChanged,       ///< From the n-th request on, another document of the folder.
};

/// How the answers for one path are spoilt.
struct Fault {
  FaultKind kind = FaultKind::kDelay;
  std::string kindName;
  std::uint64_t number = 0;  ///< Milliseconds, bytes, megabytes or requests; see the kind.
  std::string file;          ///< The other document.
  std::uint64_t times = 0;   ///< How many answers it spoils; 0 for all.
};

/// Throws std::invalid_argument, with a text for the user, for an unknown kind or a bad argument.
Fault makeFault(const std::string& kind, const std::string& argument, std::uint64_t times);

/// The faults that are set, one for each path at most. Any thread.
class FaultBook {
 public:
  /// From PATH=KIND[:ARGUMENT]; throws std::invalid_argument.
  void set(const std::string& text);
  /// From an object with "path", "fault" and perhaps "arg" and "times"; the fault "none" takes
  /// away what is set. Throws std::invalid_argument.
  void set(const boost::json::object& request);
  /// The fault for this request, which counts it.
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
