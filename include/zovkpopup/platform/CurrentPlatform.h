#pragma once

#include <memory>

#include <zovkpopup/Export.h>

namespace zovk {

struct Platform;

/// Returns the platform for the process-wide shared objects. Returns null before the popups are set
/// up or used for the first time, and after they were shut down. Any thread.
ZOVKPOPUP_API std::shared_ptr<Platform> currentPlatform();
void setCurrentPlatform(std::shared_ptr<Platform> platform);

}  // namespace zovk
