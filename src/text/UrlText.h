#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zovk {

/// The text with its percent-encoding removed; absent when that is malformed or does not give
/// UTF-8.
std::optional<std::string> withoutPercentEncoding(std::string_view text);

/// The text with everything percent-encoded that may not stand in a URL's query.
std::string withQueryEncoding(std::string_view text);

/// A file's path as it stands in a file address: what has a meaning of its own there is encoded.
std::string withPathEncoding(std::string_view path);

/// Scheme and host of a URL as they are written, without user, port and all that follows. What
/// cannot be told is empty.
struct UrlParts {
  std::string scheme;
  std::string host;
};
UrlParts partsOfUrl(const std::string& url);

}  // namespace zovk
