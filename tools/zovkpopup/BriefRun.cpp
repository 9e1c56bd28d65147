#include "zovkpopup/BriefRun.h"

#include <cstring>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <unistd.h>

#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/helper/SpawnAttributes.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

/// The program gets no descriptor of this one, and prints nothing.
class SilentFiles {
 public:
  SilentFiles() {
    ::posix_spawn_file_actions_init(&actions_);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      ::posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", O_RDWR, 0);
    }
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
  }
  ~SilentFiles() { ::posix_spawn_file_actions_destroy(&actions_); }
  SilentFiles(const SilentFiles&) = delete;
  SilentFiles& operator=(const SilentFiles&) = delete;
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

HelperProcess start(const std::string& program, std::vector<std::string> words) {
  words.insert(words.begin(), program);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const SilentFiles files;
  const SpawnAttributes attributes;
  pid_t pid = 0;
  const int error = ::posix_spawn(&pid, program.c_str(), files.get(), attributes.get(),
                                  arguments.data(), environ);
  if (error != 0) {
    throw ToolError(program + " cannot be run: " + std::strerror(error), kUnavailable);
  }
  auto process = HelperProcess::watch(pid);
  if (!process) throw ToolError("the system cannot watch a process", kUnavailable);
  return std::move(*process);
}

}  // namespace

void runBriefly(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                std::chrono::milliseconds limit) {
  constexpr std::chrono::seconds kKilledPatience{5};
  const std::string name = program.string();
  HelperProcess process = start(name, arguments);
  const auto end = process.reapUntil(std::chrono::steady_clock::now() + limit);
  if (!end) {
    process.kill();
    process.reapUntil(std::chrono::steady_clock::now() + kKilledPatience);
    throw ToolError(fmt::format("{} was ended after {} ms", name, limit.count()), kUnavailable);
  }
  if (*end != "exited with status 0") throw ToolError(name + " " + *end, kUnavailable);
}

}  // namespace zovk::tool
