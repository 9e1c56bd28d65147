#pragma once

#include <string>
#include <vector>

#include "helper/Events.h"

namespace zovk::helper {

/// Returns the schemes of the addresses that some program on this system opens.
std::vector<std::string> openableSchemes();
/// Passes the address to the system, and sends `url.opened`.
void openUrl(Id request, const std::string& url, const EventSink& events);

}  // namespace zovk::helper
