#pragma once

#include <string>

namespace zovk::tool {

/// Returns the seconds since 1970 of a text: a number of them, or YYYY-MM-DD[THH:MM[:SS]][Z] in
/// UTC; an empty text means now. Throws ToolError for any other text.
double momentOf(const std::string& text);

}  // namespace zovk::tool
