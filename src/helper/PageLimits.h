#pragma once

#include <cstdint>
#include <string>

#include <webkit/webkit.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// A context whose page processes end when they take more than so many megabytes; a number that no
/// page could live with, or no machine has, is brought into range.
GObjectPtr<WebKitWebContext> newLimitedContext(std::int64_t megabytes);
/// A session whose pages keep 64 MB at most below `directory`, all of them together, beside what
/// the engine's own cache of the net takes.
GObjectPtr<WebKitNetworkSession> newLimitedSession(const std::string& directory);

}  // namespace zovk::helper
