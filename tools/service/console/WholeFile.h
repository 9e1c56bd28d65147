#pragma once

#include <filesystem>
#include <string_view>

namespace zovk::service {

/// Puts a file in its place in one step: whoever reads it, and whatever dies meanwhile, it is the
/// old one or the new one. On disk when this returns. Throws std::runtime_error.
void writeWhole(const std::filesystem::path& path, std::string_view bytes);

}  // namespace zovk::service
