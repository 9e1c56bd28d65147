#pragma once

#include <optional>
#include <string>

namespace zovk {

/// Returns the path of the running program; empty if the system does not give it.
std::string programPath();

/// Returns the path as an absolute one, without dots and without a trailing slash.
std::string absolutePath(const std::string& path);

/// Finds a file installed with the library by its name: in the folder `zovkpopup` beside the
/// library, or beside the program that the library is linked into; else in the folder that the
/// build was configured to install. It looks nowhere else. Any thread.
std::optional<std::string> findInstalled(const std::string& name);

}  // namespace zovk
