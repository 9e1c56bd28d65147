#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zovk {

/// A program in a process of its own. It is killed, should it still run, with the object.
class ChildProcess {
 public:
  /// Starts the program that stands first; what it writes to standard error goes to the file.
  ChildProcess(std::vector<std::string> arguments, const std::string& errorFile);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Its next line on standard output; absent when that is closed.
  std::optional<std::string> nextLine();
  void signal(int number) const;
  /// Waits for its end. Its exit code, or minus the signal that ended it.
  int wait();

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  std::string read_;
};

}  // namespace zovk
