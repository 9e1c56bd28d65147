#pragma once

#include <optional>
#include <string>

#include <httplib.h>

#include "service/Answer.h"

namespace zovk::service {

/// Lets nobody use the console but the person who read its address: requests must come from this
/// machine, to a name of this machine, from no other origin, and with the token. Any thread.
class Gate {
 public:
  /// Makes a new token. Throws std::runtime_error when there is no randomness to be had.
  Gate(bool tls, const std::string& listened, int port);

  const std::string& token() const { return token_; }
  /// Where a browser on this machine finds the console, whatever the service listens on.
  const std::string& origin() const { return origin_; }
  /// Why even the empty page is not for this request; absent when it is.
  std::optional<Answer> refuseStranger(const httplib::Request& request) const;
  /// Why this request may neither read nor change anything; absent when it may.
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
