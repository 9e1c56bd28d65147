#pragma once

#include "zovkpopup/Options.h"

namespace zovk::tool {

// One function for each command. They write to standard output and give the exit code; what keeps
// them from doing their work is thrown as a ToolError.
int runSig(const SigOptions& options);
int runCheck(const CheckOptions& options);
int runExplain(const ExplainOptions& options);
int runPublish(const PublishOptions& options);
int runNew(const NewOptions& options);
int runPreview(const PreviewOptions& options);
int runCompletion(const std::string& shell);

}  // namespace zovk::tool
