#pragma once

namespace zovk::tool {

/// Reads the command line, runs the command that it names, and gives the exit code.
int runCommandLine(int argc, const char* const* argv);

}  // namespace zovk::tool
