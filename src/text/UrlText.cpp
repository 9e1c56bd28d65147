#include "text/UrlText.h"

#include <algorithm>

#include <boost/url/encode.hpp>
#include <boost/url/grammar/lut_chars.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/pct_string_view.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <boost/url/url_view.hpp>

#include "support/Utf8.h"

namespace zovk {
namespace {

constexpr auto kPathCharacters = boost::urls::pchars + '/';
constexpr auto kQueryCharacters = boost::urls::pchars + "/?";

}  // namespace

std::optional<std::string> withoutPercentEncoding(std::string_view text) {
  const auto encoded =
      boost::urls::make_pct_string_view(boost::urls::string_view(text.data(), text.size()));
  if (!encoded) return std::nullopt;
  std::string decoded = encoded->decode();
  if (!isUtf8(decoded)) return std::nullopt;
  return decoded;
}

std::string withQueryEncoding(std::string_view text) {
  return boost::urls::encode(boost::urls::string_view(text.data(), text.size()), kQueryCharacters);
}

std::string withPathEncoding(std::string_view path) {
  return boost::urls::encode(boost::urls::string_view(path.data(), path.size()), kPathCharacters);
}

// The address is cut off after the host: in the rest, web engines allow more characters than the
// parser does.
UrlParts partsOfUrl(const std::string& url) {
  const std::size_t colon = url.find(':');
  if (colon == std::string::npos) return {};
  const std::size_t slashes = url.find("://");
  if (slashes != colon) return {url.substr(0, colon), ""};
  const std::size_t end = std::min(url.find_first_of("/?#\\", slashes + 3), url.size());
  const auto parsed = boost::urls::parse_uri(boost::urls::string_view(url.data(), end));
  if (!parsed) return {url.substr(0, colon), ""};
  const boost::urls::string_view host = parsed->encoded_host();
  return {std::string(parsed->scheme()), std::string(host)};
}

}  // namespace zovk
