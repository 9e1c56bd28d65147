#pragma once

#include <string>
#include <vector>

#include "zovkpopup/Options.h"

namespace zovk::tool {

/// Corrects on disk each "sig" that does not match its page or address, and the names of page
/// files. Returns what was changed, one line for each. All other bytes of the document stay the
/// same. Changes nothing in a document that the engine rejects. Throws ToolError if a file cannot
/// be read or written.
std::vector<std::string> fixDocument(const DocumentOptions& options);

}  // namespace zovk::tool
