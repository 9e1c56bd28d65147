#include "zovkpopup/Shell.h"

#include <cstdio>
#include <cstdlib>

#include <fmt/format.h>
#include <sys/wait.h>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {

std::string shellWord(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    if (c == '\'') {
      word += "'\\''";
    } else {
      word += c;
    }
  }
  return word + "'";
}

void runShell(const std::string& command) {
  // What it prints comes behind what has been printed so far.
  std::fflush(nullptr);
  const int status = std::system(command.c_str());
  if (status == 0) return;
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  throw ToolError(fmt::format("this command failed with {}: {}", code, command), kUnavailable);
}

}  // namespace zovk::tool
