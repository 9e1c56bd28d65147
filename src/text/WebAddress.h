#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zovk {

/// A web address as it is sent.
struct WebAddress {
  /// The whole address. Its path is free of "." and ".." and percent-encoded. Scheme, host and
  /// query are unchanged.
  std::string text;
  /// Host and port, in lower case.
  std::string host;
  /// The path, decoded, without query and fragment; empty if the address has none.
  std::string path;
};

/// Reads a web address. Both the signed and the sent address come from this one reading; reading
/// the `text` again gives the same. Returns nothing for an address that cannot be sent as meant:
/// not HTTP or HTTPS, no host, a blank or a control character anywhere, or an encoded zero byte in
/// the path. Any thread.
std::optional<WebAddress> readWebAddress(std::string_view url);

}  // namespace zovk
