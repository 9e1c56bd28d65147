#pragma once

#include <memory>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// The platform of a host that is set up; null otherwise, and on any other thread than the host's
/// main thread.
std::shared_ptr<Platform> hostPlatform();

}  // namespace zovk
