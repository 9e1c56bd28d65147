#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zovk {

/// Returns the text with its percent-encoding removed; nothing if that is malformed or does not
/// give UTF-8.
std::optional<std::string> withoutPercentEncoding(std::string_view text);

/// Returns the text with every character percent-encoded that a URL's query may not contain.
std::string withQueryEncoding(std::string_view text);

/// Returns a file's path in the form for a file address: characters with a special meaning there
/// are encoded.
std::string withPathEncoding(std::string_view path);

/// Scheme and host of a URL as written, without user, port and everything after. Unknown parts are
/// empty.
struct UrlParts {
  std::string scheme;
  std::string host;
};
UrlParts partsOfUrl(const std::string& url);

}  // namespace zovk
