#pragma once

#include <memory>

#include "platform/Platform.h"

namespace zovk {

/// Sends the log lines to the platform's log, which is kept for that, and lets the debug switch be
/// read from the host's packaging.
void setUpLogger(std::shared_ptr<Platform> platform);

}  // namespace zovk
