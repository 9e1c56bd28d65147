#pragma once

#include <string>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// Returns the name for the application's data: the one the host gave, or else the program's name,
/// with every character that does not belong in a directory name replaced.
std::string applicationId(const ZOVKPopupHostSettings& settings);

/// Returns the application's home directory, absolute and without a trailing slash: the one the
/// host gave, or else a directory below the user's data directory with the application's name.
std::string containerDirectory(const ZOVKPopupHostSettings& settings);

/// Makes the directory, and "Library/Caches" and "Library/Preferences" in it, for the user alone.
/// Those two and the folders of caches are made private if they were not. A home directory that
/// existed keeps its mode, because it may be the game's own. Failures are logged. It runs before
/// the logger is set up, so it takes the log itself.
void makeContainer(const std::string& home, PlatformLog& log);

}  // namespace zovk
