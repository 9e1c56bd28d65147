#pragma once

#include <memory>
#include <optional>
#include <thread>

#include "zovkpopup/platform/Platform.h"

namespace zovk {

/// Sets the main thread of the current host; nothing after it was shut down. Any thread.
void setHostThread(std::optional<std::thread::id> mainThread);

/// Returns whether this is the main thread of the current host. Any thread.
bool isHostThread();

/// Returns the platform of the current host; null if there is none, and on any thread but the
/// host's main thread.
std::shared_ptr<Platform> hostPlatform();

}  // namespace zovk
