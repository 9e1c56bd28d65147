#pragma once

namespace zovk::tool {

/// Reads the command line and runs its command. Returns the exit code.
int runCommandLine(int argc, const char* const* argv);

}  // namespace zovk::tool
