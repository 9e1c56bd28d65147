#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zovk::tool {

/// Returns the whole file. Throws ToolError if it cannot be read.
std::string readFile(const std::filesystem::path& path);
/// Throws ToolError if it cannot be written.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

/// Returns whether a target is an address, not a file.
bool isAddress(std::string_view target);

}  // namespace zovk::tool
