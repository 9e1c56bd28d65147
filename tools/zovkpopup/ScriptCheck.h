#pragma once

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Adds an error for each script of the read pages that cannot be parsed. The helper program parses
/// them, without running them and without a display. Where it is not installed or fails, adds a
/// hint instead.
void checkScripts(Problems& problems);

}  // namespace zovk::tool
