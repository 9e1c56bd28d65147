#pragma once

#include "zovkpopup/Options.h"
#include "zovkpopup/StopSignals.h"

namespace zovk::tool {

/// Shows a page file, reloads it when it is saved, and prints each answer, until the program is
/// asked to end. Keys on standard input change theme, size and kind meanwhile.
int watchPreview(PreviewOptions options, const StopSignals& signals);

}  // namespace zovk::tool
