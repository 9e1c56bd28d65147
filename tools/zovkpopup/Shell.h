#pragma once

#include <string>
#include <string_view>

namespace zovk::tool {

/// The text as one word for the shell.
std::string shellWord(std::string_view text);

/// Runs a command line and waits for its end. Throws ToolError, naming the command, when it fails.
void runShell(const std::string& command);

}  // namespace zovk::tool
