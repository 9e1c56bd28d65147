#pragma once

#include <string>

namespace zovk::service {

// The HTTP library does not give its sockets away, so they are found among the open descriptors.

/// Closes the connection with this peer in both directions at once.
void cutConnection(const std::string& remoteAddress, int remotePort);
/// Makes every connection on the port end after its present answer.
void stopReading(int localPort);

}  // namespace zovk::service
