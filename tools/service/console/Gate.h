#pragma once

#include <optional>
#include <string>

#include <httplib.h>

#include "service/Answer.h"

namespace zovk::service {

/// Admits only the person who read the console's address: requests must come from this machine, to
/// a name of this machine, from no other origin, and with the token. Any thread.
class Gate {
 public:
  /// Makes a new token. Throws std::runtime_error if the system gives no random bytes.
  Gate(bool tls, const std::string& listened, int port);

  const std::string& token() const { return token_; }
  /// Returns the address of the console for a browser on this machine, whatever the service listens
  /// on.
  const std::string& origin() const { return origin_; }
  /// Returns why this request must not even get the empty page; nothing if it may.
  std::optional<Answer> refuseStranger(const httplib::Request& request) const;
  /// Returns why this request may neither read nor change anything; nothing if it may.
  std::optional<Answer> refuse(const httplib::Request& request) const;

 private:
  bool isOwnName(const std::string& host) const;
  bool isOwnOrigin(const httplib::Request& request) const;
  bool hasToken(const httplib::Request& request) const;

  const std::string scheme_;
  const int port_;
  const std::string origin_;
  const std::string token_;
};

}  // namespace zovk::service
