#include <cstdio>

#include "zovkpopup/Commands.h"
#include "zovkpopup/Embedded.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {

int runBashCompletion() {
  std::fwrite(kBashCompletion.data(), 1, kBashCompletion.size(), stdout);
  return kSuccess;
}

}  // namespace zovk::tool
