#pragma once

#include <string>

namespace zovk::service {

// The HTTP library hands its sockets to nobody, so they are found among the open descriptors.

/// Closes the connection with this peer in both directions; nothing more gets through.
void cutConnection(const std::string& remoteAddress, int remotePort);
/// Lets every connection on the port end after the answer that is under way.
void stopReading(int localPort);

}  // namespace zovk::service
