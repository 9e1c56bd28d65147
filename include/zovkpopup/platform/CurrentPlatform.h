#pragma once

#include <functional>
#include <memory>

#include <zovkpopup/Export.h>

namespace zovk {

struct Platform;

/// The platform on which the process-wide shared objects are made. When none has been set, the
/// default is asked for one first; null when that has none to give, or after it was taken back.
/// Any thread.
ZOVKPOPUP_API std::shared_ptr<Platform> currentPlatform();
void setCurrentPlatform(std::shared_ptr<Platform> platform);

/// What `currentPlatform` asks when nothing has been set; it sets the platform that it makes.
void setDefaultPlatform(std::function<void()> makeAndSet);

}  // namespace zovk
