#pragma once

#include <string>
#include <vector>

#include "webhost/Events.h"

namespace zovk {

/// Schemes of the addresses that some program on this system opens.
std::vector<std::string> openableSchemes();
/// Hands the address to the system and sends `url.opened`.
void openUrl(Id request, const std::string& url, const EventSink& events);

}  // namespace zovk
