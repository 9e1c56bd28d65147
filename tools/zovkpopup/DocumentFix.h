#pragma once

#include <string>
#include <vector>

#include "zovkpopup/Options.h"

namespace zovk::tool {

/// Puts right each "sig" that does not fit its page or address, and the names of page files, on
/// disk; says what was changed, a line for each. The rest of the document stays as it is, byte by
/// byte. Nothing is changed in a document that the engine rejects. Throws ToolError when a file
/// cannot be read or written.
std::vector<std::string> fixDocument(const DocumentOptions& options);

}  // namespace zovk::tool
