#pragma once

#include "zovkpopup/Options.h"

namespace zovk::tool {

/// Dresses helpers that are started from now on as the options say.
void setLook(const PreviewOptions& options);

}  // namespace zovk::tool
