#pragma once

#include <memory>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Sends the log lines to `log`, which is kept alive for that. Lets the debug switch be read from
/// the host's packaging as long as the platform exists.
void setUpLogger(const std::weak_ptr<Platform>& platform, std::shared_ptr<PlatformLog> log);

}  // namespace zovk
