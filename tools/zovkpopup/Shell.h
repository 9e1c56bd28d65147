#pragma once

#include <string>
#include <string_view>

namespace zovk::tool {

/// Returns the text as one word for the shell.
std::string shellWord(std::string_view text);

/// Runs a command line and waits for its end. Throws ToolError, with the command, if it fails.
void runShell(const std::string& command);

}  // namespace zovk::tool
