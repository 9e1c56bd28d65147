#pragma once

#include <filesystem>
#include <string_view>

namespace zovk::service {

/// Replaces a file in one step: a reader sees the old or the new file, even after a crash. It is on
/// disk when this returns. Throws std::runtime_error.
void writeWhole(const std::filesystem::path& path, std::string_view bytes);

}  // namespace zovk::service
