#pragma once

#include "zovkpopup/Options.h"
#include "zovkpopup/StopSignals.h"

namespace zovk::tool {

/// Takes pictures of a page in every size, theme and kind that the options leave open, and writes
/// them as one HTML sheet that needs no other file. Throws ToolError if a picture fails.
int writeMatrix(const PreviewOptions& options, const StopSignals& signals);

}  // namespace zovk::tool
