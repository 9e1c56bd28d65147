#pragma once

#include <string>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The name under which the application's data is kept: what the host says, else the program's
/// name, with every character that does not belong in a directory name replaced.
std::string applicationId(const ZOVKPopupHostSettings& settings);

/// The application's home directory, absolute and without a trailing slash: what the host says,
/// else a directory named by the application below the user's data directory.
std::string containerDirectory(const ZOVKPopupHostSettings& settings);

/// Makes the directory and "Library/Caches" and "Library/Preferences" in it, for the user alone.
/// Those two, and the folders of caches, are made private where they were not; a home directory
/// that was there keeps its mode, as it may be the game's own. What cannot be made is logged and
/// goes missing. It runs before the logger is set up, hence the
/// log itself.
void makeContainer(const std::string& home, PlatformLog& log);

}  // namespace zovk
