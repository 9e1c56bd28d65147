#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zovk {

/// A web address as it goes over the wire.
struct WebAddress {
  /// The whole address. Its path has no "." and ".." left and is percent-encoded; scheme, host and
  /// query stand as they were given.
  std::string text;
  /// Host and port, in lower case.
  std::string host;
  /// The path, decoded, without query and fragment; empty where the address has none.
  std::string path;
};

/// The one reading of a web address: what is signed and what is sent both come from it. Reading the
/// `text` again gives the same. Absent for what cannot be sent as it is meant: no HTTP or HTTPS
/// address, no host, a blank or a control character anywhere, an encoded zero byte in the path.
/// Any thread.
std::optional<WebAddress> readWebAddress(std::string_view url);

}  // namespace zovk
