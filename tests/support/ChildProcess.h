#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zovk {

/// A program in a separate process. It is killed with the object if it still runs.
class ChildProcess {
 public:
  /// Starts the program that comes first; its standard error goes to the file.
  ChildProcess(std::vector<std::string> arguments, const std::string& errorFile);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Returns its next line on standard output, or nothing if that is closed.
  std::optional<std::string> nextLine();
  void signal(int number) const;
  /// Waits for its end. Returns its exit code, or minus the signal that ended it.
  int wait();

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  std::string read_;
};

}  // namespace zovk
