#include "service/console/Gate.h"

#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>
#include <openssl/crypto.h>

#include "service/Loopback.h"
#include "service/console/Random.h"

namespace zovk::service {
namespace {

constexpr const char* kTokenHeader = "X-Console-Token";

// The time of the comparison does not show how much of the token was right.
bool sameText(const std::string& left, const std::string& right) {
  return left.size() == right.size() && CRYPTO_memcmp(left.data(), right.data(), left.size()) == 0;
}

}  // namespace

Gate::Gate(bool tls, const std::string& listened, int port)
    : scheme_(tls ? "https" : "http"),
      port_(port),
      origin_(baseAddress(tls, isLoopback(listened) ? listened : "127.0.0.1", port)),
      token_(unguessable()) {}

// If another site's name led to this machine, that site's pages would have this origin.
bool Gate::isOwnName(const std::string& host) const {
  const std::string address = scheme_ + "://" + host;
  const auto parsed = boost::urls::parse_uri(address);
  if (!parsed || parsed->has_userinfo() || !parsed->encoded_path().empty()) return false;
  return isLoopback(std::string(parsed->host_address())) && parsed->port() == std::to_string(port_);
}

// Browsers say where a call comes from; programs have no origin.
bool Gate::isOwnOrigin(const httplib::Request& request) const {
  if (request.has_header("Origin") &&
      request.get_header_value("Origin") != scheme_ + "://" + request.get_header_value("Host")) {
    return false;
  }
  const std::string site = request.get_header_value("Sec-Fetch-Site");
  return site.empty() || site == "same-origin" || site == "none";
}

// A stream of events cannot send a header of its own.
bool Gate::hasToken(const httplib::Request& request) const {
  const std::string given = request.has_header(kTokenHeader)
                                ? request.get_header_value(kTokenHeader)
                                : request.get_param_value("token");
  return sameText(given, token_);
}

std::optional<Answer> Gate::refuseStranger(const httplib::Request& request) const {
  if (!isLoopback(request.remote_addr)) return problem(403, "only from this machine");
  if (!isOwnName(request.get_header_value("Host"))) {
    return problem(403, "the console does not go by this name");
  }
  return std::nullopt;
}

std::optional<Answer> Gate::refuse(const httplib::Request& request) const {
  if (auto refusal = refuseStranger(request)) return refusal;
  if (!isOwnOrigin(request)) return problem(403, "no other page may call the console");
  if (!hasToken(request)) {
    return problem(403, "the token is missing or wrong: open the address that the service printed");
  }
  return std::nullopt;
}

}  // namespace zovk::service
