#pragma once

#include "zovkpopup/Preview.h"

namespace zovk::tool {

/// Prints the answer to standard output; gives what the program exits with.
int printAnswer(const PreviewAnswer& answer);
/// The same as JSON, with what was said about the page.
int printAnswerAsJson(const PreviewAnswer& answer, const PreviewFindings& findings);

}  // namespace zovk::tool
