#pragma once

#include <cstdint>
#include <string>

#include <webkit/webkit.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Returns a context whose page processes end when they take more than this many megabytes. The
/// number is brought into the range of what a page needs and a machine has.
GObjectPtr<WebKitWebContext> newLimitedContext(std::int64_t megabytes);
/// Returns a session whose pages together keep at most 64 MB below `directory`, without the web
/// engine's own network cache.
GObjectPtr<WebKitNetworkSession> newLimitedSession(const std::string& directory);

}  // namespace zovk::helper
