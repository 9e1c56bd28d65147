#pragma once

#include "zovkpopup/Options.h"
#include "zovkpopup/StopSignals.h"

namespace zovk::tool {

/// Pictures a page in every size, theme and kind that the options leave open, and writes them as
/// one HTML sheet that needs no other file. Throws ToolError when one cannot be taken.
int writeMatrix(const PreviewOptions& options, const StopSignals& signals);

}  // namespace zovk::tool
