#include "support/ChildProcess.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zovk {
namespace {

struct FileActions {
  FileActions() { posix_spawn_file_actions_init(&actions); }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  posix_spawn_file_actions_t actions{};
};

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> arguments, const std::string& errorFile) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  output_ = ends[0];
  std::vector<char*> list;
  for (std::string& argument : arguments) list.push_back(argument.data());
  list.push_back(nullptr);

  FileActions files;
  posix_spawn_file_actions_adddup2(&files.actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&files.actions, STDERR_FILENO, errorFile.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);
  const int error =
      ::posix_spawn(&pid_, list.front(), &files.actions, nullptr, list.data(), environ);
  ::close(ends[1]);
  if (error != 0) throw std::runtime_error("the program does not start");
}

ChildProcess::~ChildProcess() {
  if (pid_ > 0) {
    signal(SIGKILL);
    wait();
  }
  ::close(output_);
}

std::optional<std::string> ChildProcess::nextLine() {
  std::array<char, 4096> piece{};
  while (read_.find('\n') == std::string::npos) {
    const ssize_t got = ::read(output_, piece.data(), piece.size());
    if (got <= 0) return std::nullopt;
    read_.append(piece.data(), static_cast<std::size_t>(got));
  }
  const std::size_t end = read_.find('\n');
  std::string line = read_.substr(0, end);
  read_.erase(0, end + 1);
  return line;
}

void ChildProcess::signal(int number) const {
  if (pid_ > 0) ::kill(pid_, number);
}

int ChildProcess::wait() {
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  pid_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace zovk
