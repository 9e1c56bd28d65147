#pragma once

#include <memory>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Sends the log lines to `log`, which is kept for that, and lets the debug switch be read from the
/// host's packaging while the platform is there.
void setUpLogger(const std::weak_ptr<Platform>& platform, std::shared_ptr<PlatformLog> log);

}  // namespace zovk
