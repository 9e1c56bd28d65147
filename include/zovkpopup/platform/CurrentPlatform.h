#pragma once

#include <functional>
#include <memory>

#include <zovkpopup/Export.h>

namespace zovk {

struct Platform;

/// Returns the platform for the process-wide shared objects. If none is set, asks the default for
/// one first. Returns null if the default has none, or after the platform was removed. Any thread.
ZOVKPOPUP_API std::shared_ptr<Platform> currentPlatform();
void setCurrentPlatform(std::shared_ptr<Platform> platform);

/// Sets the function that `currentPlatform` calls when no platform is set. The function makes a
/// platform and sets it.
void setDefaultPlatform(std::function<void()> makeAndSet);

}  // namespace zovk
