#pragma once

#include <memory>
#include <optional>
#include <thread>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Says which thread is the main thread of the host that is set up; none when it was shut down. Any
/// thread.
void setHostThread(std::optional<std::thread::id> mainThread);

/// Whether this is the main thread of a host that is set up. Any thread.
bool isHostThread();

/// The platform of a host that is set up; null otherwise, and on any other thread than the host's
/// main thread.
std::shared_ptr<Platform> hostPlatform();

}  // namespace zovk
