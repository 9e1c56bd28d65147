#pragma once

#include <string>

namespace zovk {

/// Makes a directory accessible to the user alone (0700), whatever it was before and whatever the
/// process's mask. A link is left unchanged: its target is not the application's.
void makePrivateDirectory(const std::string& path);

/// Makes an empty file for the user alone (0600) if there is none, and makes an existing one
/// private. Returns false if there is no file in the end, or something other than a file: opening a
/// pipe would wait for its other end, and a link may lead to somebody else's file.
bool makePrivateFile(const std::string& path);

/// Makes a file private that another program may make. Returns true also if there is none.
bool keepPrivateFile(const std::string& path);

}  // namespace zovk
