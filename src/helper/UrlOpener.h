#pragma once

#include <string>
#include <vector>

#include "helper/Events.h"

namespace zovk::helper {

/// Schemes of the addresses that some program on this system opens.
std::vector<std::string> openableSchemes();
/// Hands the address to the system and sends `url.opened`.
void openUrl(Id request, const std::string& url, const EventSink& events);

}  // namespace zovk::helper
