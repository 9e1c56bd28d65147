#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace zovk {

struct CurlSessionSettings {
  /// A file that keeps downloads for the next start; empty for none.
  std::string cachePath;
  /// A PEM file with certificates to trust in addition to the system's; empty for none.
  std::string certificateAuthority;

  /// A transfer that pauses for this long ends, unless its request sets another time.
  std::chrono::milliseconds longestStall{std::chrono::seconds(15)};
  /// A POST, which is a query or a report, ends after this time even if its answer is still coming.
  /// Waiting for its turn does not count.
  std::chrono::milliseconds longestPost{std::chrono::seconds(15)};
  /// A transfer that stays below this many bytes a second for `slowestTime` ends.
  long lowestSpeed = 50;
  std::chrono::seconds slowestTime{30};

  /// The most requests for data on the wire at a time; the others wait in order.
  std::size_t mostDataRequests = 8;
  /// The most downloads from one host at a time. More would not make them faster.
  std::size_t mostDownloadsOfAHost = 6;
  /// The most descriptors that all downloads may use together.
  std::size_t mostDownloadDescriptors = 28;
};

}  // namespace zovk
