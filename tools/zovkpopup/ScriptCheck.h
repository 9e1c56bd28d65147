#pragma once

#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Adds an error for each script of the read pages that cannot be parsed, and a hint for each page
/// whose scripts were not checked. Where the helper program is not installed or fails, adds one
/// hint for all pages.
void checkScripts(Problems& problems);

}  // namespace zovk::tool
