#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zovk::tool {

/// The whole file. Throws ToolError when it cannot be read.
std::string readFile(const std::filesystem::path& path);
/// Throws ToolError when it cannot be written.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

/// Whether a target is an address rather than a file.
bool isAddress(std::string_view target);

}  // namespace zovk::tool
