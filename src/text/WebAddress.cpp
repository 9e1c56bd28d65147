#include "text/WebAddress.h"

#include <algorithm>
#include <vector>

#include <boost/url/encode.hpp>
#include <boost/url/grammar/hexdig_chars.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/pct_string_view.hpp>
#include <boost/url/rfc/pchars.hpp>
#include <boost/url/rfc/unreserved_chars.hpp>
#include <boost/url/url_view.hpp>

#include "text/LowerCase.h"

namespace zovk {
namespace {

constexpr auto kPathCharacters = boost::urls::pchars + '/';

bool isPathCharacter(char c) {
  return kPathCharacters(static_cast<unsigned char>(c));
}

boost::urls::string_view view(std::string_view text) {
  return {text.data(), text.size()};
}

bool isBlankOrControl(char c) {
  return (c >= 0 && c <= ' ') || c == '\x7f';
}

bool isEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && boost::urls::grammar::hexdig_chars(text[1]) &&
         boost::urls::grammar::hexdig_chars(text[2]);
}

// Returns whether a path means what is written, and is sent as it is.
bool isPlain(std::string_view path) {
  return std::all_of(path.begin(), path.end(), isPathCharacter) &&
         path.find("/.") == std::string_view::npos;
}

// Escapes stay; a "%" that begins none means itself, like every character that needs an escape.
std::string encodedPath(std::string_view path) {
  std::string encoded;
  while (!path.empty()) {
    const std::size_t length = isEscape(path) ? 3 : 1;
    const std::string_view piece = path.substr(0, length);
    encoded += length == 3 ? std::string(piece) : boost::urls::encode(view(piece), kPathCharacters);
    path.remove_prefix(length);
  }
  return encoded;
}

std::string decoded(std::string_view encoded) {
  return boost::urls::make_pct_string_view(view(encoded))->decode();
}

// Servers and whatever stands before them take these out, each at its own time.
std::string withoutDotSegments(std::string_view path) {
  std::vector<std::string_view> kept;
  while (!path.empty()) {
    path.remove_prefix(1);  // the slash before the segment
    const std::size_t length = std::min(path.find('/'), path.size());
    const std::string_view segment = path.substr(0, length);
    path.remove_prefix(length);
    const std::string meaning = decoded(segment);
    const bool goesUp = meaning == "..";
    if (goesUp && !kept.empty()) kept.pop_back();
    if (!goesUp && meaning != ".") {
      kept.push_back(segment);
    } else if (path.empty()) {
      kept.emplace_back();  // the directory itself
    }
  }
  std::string result;
  for (const std::string_view segment : kept) result.append("/").append(segment);
  return result;
}

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

// Works byte by byte: a function that encodes a whole text would encode the escapes again.
std::string withOtherScriptsEscaped(std::string_view text) {
  std::string escaped;
  for (const char& c : text) {
    escaped += isAscii(c) ? std::string(1, c)
                          : boost::urls::encode(view({&c, 1}), boost::urls::unreserved_chars);
  }
  return escaped;
}

// Returns host and port of an address that is cut off before its path; nothing if there is no host
// or it is not a web address. Names in other scripts are accepted: the resolver knows them.
std::optional<std::string> hostOf(std::string_view head) {
  const bool isReadable = std::all_of(head.begin(), head.end(), isAscii);
  const std::string escaped = isReadable ? std::string() : withOtherScriptsEscaped(head);
  const auto parsed = boost::urls::parse_uri(isReadable ? view(head) : view(escaped));
  if (!parsed || parsed->encoded_host().empty()) return std::nullopt;
  const std::string scheme = lowerCase(std::string(parsed->scheme()));
  if (scheme != "http" && scheme != "https") return std::nullopt;
  return lowerCase(std::string(parsed->encoded_host_and_port()));
}

}  // namespace

std::optional<WebAddress> readWebAddress(std::string_view url) {
  if (std::any_of(url.begin(), url.end(), isBlankOrControl)) return std::nullopt;
  const std::size_t slashes = url.find("://");
  if (slashes == std::string_view::npos) return std::nullopt;
  const std::size_t pathStart = std::min(url.find_first_of("/?#", slashes + 3), url.size());
  const std::size_t pathEnd = std::min(url.find_first_of("?#", pathStart), url.size());
  const std::string_view head = url.substr(0, pathStart);
  const auto host = hostOf(head);
  if (!host) return std::nullopt;
  const std::string_view written = url.substr(pathStart, pathEnd - pathStart);
  if (isPlain(written)) return WebAddress{std::string(url), *host, std::string(written)};
  const std::string path = withoutDotSegments(encodedPath(written));
  WebAddress address{std::string(head) + path + std::string(url.substr(pathEnd)), *host,
                     decoded(path)};
  // A signature ends at a zero byte.
  if (address.path.find('\0') != std::string::npos) return std::nullopt;
  return address;
}

}  // namespace zovk
