#pragma once

#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/Problems.h"

namespace zovk::tool {

/// All that is wrong with a document and its pages, in the order in which they are looked at. Makes
/// an engine, so one at a time.
Problems problemsIn(const OpenDocument& opened);

}  // namespace zovk::tool
