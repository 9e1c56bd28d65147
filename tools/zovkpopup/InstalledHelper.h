#pragma once

#include <filesystem>

namespace zovk::tool {

/// Returns the folder with the library's own files, by the place of this program.
std::filesystem::path libraryFolder();

/// Returns the library's helper program. Throws ToolError if it is not installed.
std::filesystem::path installedHelper();

}  // namespace zovk::tool
