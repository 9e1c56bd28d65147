#pragma once

#include <string>

namespace zovk {

/// Makes the directory the user's alone (0700), whatever it was before and whatever the process's
/// mask says. A link is left as it is: what it leads to is not the application's.
void makePrivateDirectory(const std::string& path);

/// Makes an empty file for the user alone (0600) where there is none, and makes one that is there
/// private. False when there is none in the end, or something else than a file: opening a pipe
/// would wait for its other end, and behind a link is somebody else's file.
bool makePrivateFile(const std::string& path);

/// The same for a file that another program may make. True, too, when nothing is there.
bool keepPrivateFile(const std::string& path);

}  // namespace zovk
