#include <algorithm>
#include <cstdio>

#include "zovkpopup/Commands.h"
#include "zovkpopup/Embedded.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {

int runCompletion(const std::string& shell) {
  const auto* const script =
      std::find_if(kCompletions.begin(), kCompletions.end(),
                   [&shell](const Completion& completion) { return completion.shell == shell; });
  if (script == kCompletions.end()) throw ToolError(shell + ": is no shell that is known");
  std::fwrite(script->text.data(), 1, script->text.size(), stdout);
  return kSuccess;
}

}  // namespace zovk::tool
