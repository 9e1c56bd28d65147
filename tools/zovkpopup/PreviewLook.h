#pragma once

#include "zovkpopup/Options.h"

namespace zovk::tool {

/// Sets the look of helpers that are started from now on, as the options ask.
void setLook(const PreviewOptions& options);

}  // namespace zovk::tool
