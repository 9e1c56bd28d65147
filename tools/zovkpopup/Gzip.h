#pragma once

#include <string>
#include <string_view>

namespace zovk::tool {

/// Returns the bytes as a gzip file, without a name or a time, so that the same bytes always give
/// the same file. Throws ToolError if there is not enough memory.
std::string gzip(std::string_view bytes);

}  // namespace zovk::tool
