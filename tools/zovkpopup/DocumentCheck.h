#pragma once

#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// Returns all problems of a document and its pages, in the order of examination. Makes an engine,
/// so only one call at a time.
Problems problemsIn(const OpenDocument& opened);

}  // namespace zovk::tool
