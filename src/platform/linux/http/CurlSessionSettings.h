#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace zovk {

struct CurlSessionSettings {
  /// A file that keeps downloads for the next time; empty for none.
  std::string cachePath;
  /// A PEM file with certificates to trust beside the system's; empty for none.
  std::string certificateAuthority;

  /// A transfer that stands still for this long ends, unless its request says how long it may.
  std::chrono::milliseconds longestStall{std::chrono::seconds(15)};
  /// A request that posts, which is a query or a report, ends after this long even when its answer
  /// is still coming. Waiting for its turn does not count.
  std::chrono::milliseconds longestPost{std::chrono::seconds(15)};
  /// A transfer that stays below this many bytes a second for `slowestTime` ends.
  long lowestSpeed = 50;
  std::chrono::seconds slowestTime{30};

  /// Requests for data that are on the wire at a time; the others wait in order.
  std::size_t mostDataRequests = 8;
  /// Downloads from one host at a time. More do not make them faster.
  std::size_t mostDownloadsOfAHost = 6;
  /// Descriptors that all downloads may use together.
  std::size_t mostDownloadDescriptors = 28;
};

}  // namespace zovk
