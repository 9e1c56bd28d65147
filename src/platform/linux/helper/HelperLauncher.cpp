#include "platform/linux/helper/HelperLauncher.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/linux/helper/SpawnAttributes.h"
#include "platform/linux/system/Paths.h"
#include "protocol/FrameCodec.h"

namespace zovk {
namespace {

/// The descriptors that the helper inherits: its socket, the game's output, and no others.
class SpawnFiles {
 public:
  explicit SpawnFiles(int socket) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, socket, kHelperDescriptor);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions_, kHelperDescriptor + 1);
  }
  ~SpawnFiles() { ::posix_spawn_file_actions_destroy(&actions_); }
  SpawnFiles(const SpawnFiles&) = delete;
  SpawnFiles& operator=(const SpawnFiles&) = delete;
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

HelperLauncher::Started failure(const std::string& step, int error) {
  return {{}, std::nullopt, step + ": " + std::strerror(error)};
}

HelperLauncher::Started spawn(std::string path) {
  if (path.empty()) return {{}, std::nullopt, "no helper program is installed"};
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    return failure("no socket", errno);
  }
  UniqueFd ours(ends[0]);
  const UniqueFd theirs(ends[1]);
  const SpawnFiles files(theirs.get());
  const SpawnAttributes attributes;
  const std::array<char*, 2> arguments{path.data(), nullptr};
  pid_t pid = 0;
  const int error =
      ::posix_spawn(&pid, path.c_str(), files.get(), attributes.get(), arguments.data(), environ);
  if (error != 0) return failure("cannot run " + path, error);
  auto process = HelperProcess::watch(pid);
  if (!process) return {{}, std::nullopt, "the system cannot watch a process"};
  return {std::move(ours), std::move(process), {}};
}

std::string installedHelperPath() {
  const auto found = findInstalled("zovkpopup-helper");
  std::error_code error;
  return found && std::filesystem::is_regular_file(*found, error) ? *found : std::string();
}

}  // namespace

HelperLauncher helperProcessLauncher(const ZOVKPopupHostSettings& settings) {
  HelperLauncher launcher;
  launcher.start = [path = settings.helperPath] {
    return spawn(path.empty() ? installedHelperPath() : path);
  };
  launcher.restAfter = std::chrono::seconds(settings.readySeconds);
  return launcher;
}

}  // namespace zovk
