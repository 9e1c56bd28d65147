#pragma once

#include <optional>
#include <string>

namespace zovk {

/// The path of the program that runs; empty when the system does not tell.
std::string programPath();

/// The path as one from the root, without dots and without a trailing slash.
std::string absolutePath(const std::string& path);

/// Finds what is installed with the library by its name: in the folder `zovkpopup` beside the
/// library, or beside the program that the library is linked into, else in the one that the build
/// was configured to install. No other place counts. Any thread.
std::optional<std::string> findInstalled(const std::string& name);

}  // namespace zovk
