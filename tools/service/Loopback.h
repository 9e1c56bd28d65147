#pragma once

#include <string>

namespace zovk::service {

/// Whether an address, or the name "localhost", can only be reached from this machine.
bool isLoopback(const std::string& address);
/// Whether the text is a numeric address, which a certificate names differently from a host.
bool isNumericAddress(const std::string& address);
/// http://ADDRESS:PORT, with brackets where the address needs them.
std::string baseAddress(bool tls, const std::string& address, int port);

}  // namespace zovk::service
