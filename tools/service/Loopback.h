#pragma once

#include <string>

namespace zovk::service {

/// Returns whether an address, or the name "localhost", can only be reached from this machine.
bool isLoopback(const std::string& address);
/// Returns whether the text is a numeric address, which has its own form in a certificate.
bool isNumericAddress(const std::string& address);
/// Returns http://ADDRESS:PORT, with brackets if the address needs them.
std::string baseAddress(bool tls, const std::string& address, int port);

}  // namespace zovk::service
