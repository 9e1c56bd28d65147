#pragma once

#include "zovkpopup/Options.h"

namespace zovk::tool {

// One function for each command. Each writes to standard output and returns the exit code. Failures
// are thrown as ToolError.
int runSig(const SigOptions& options);
int runCheck(const CheckOptions& options);
int runExplain(const ExplainOptions& options);
int runPublish(const PublishOptions& options);
int runNew(const NewOptions& options);
int runPreview(const PreviewOptions& options);
int runCompletion(const std::string& shell);

}  // namespace zovk::tool
