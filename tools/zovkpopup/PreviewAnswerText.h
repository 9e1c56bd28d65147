#pragma once

#include "zovkpopup/Preview.h"

namespace zovk::tool {

/// Prints the answer to standard output. Returns the exit code.
int printAnswer(const PreviewAnswer& answer);
/// Prints the same as JSON, with the findings about the page.
int printAnswerAsJson(const PreviewAnswer& answer, const PreviewFindings& findings);

}  // namespace zovk::tool
