#pragma once

#include <string>

namespace zovk::tool {

/// Seconds since 1970 of a text: a number of them, or YYYY-MM-DD[THH:MM[:SS]][Z] in UTC; an empty
/// one is now. Throws ToolError for anything else.
double momentOf(const std::string& text);

}  // namespace zovk::tool
