#include "support/ProcessFacts.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace zovk {
namespace {

namespace fs = std::filesystem;

struct ProcessState {
  char state = 'Z';
  pid_t parent = 0;
};

// The program's name, in parentheses, may hold anything; what follows its end is plain.
ProcessState stateOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  ProcessState result;
  if (!std::getline(file, line)) return result;
  const std::size_t end = line.rfind(") ");
  if (end == std::string::npos) return result;
  if (std::sscanf(line.c_str() + end + 2, "%c %d", &result.state, &result.parent) != 2) return {};
  return result;
}

}  // namespace

bool isAlive(pid_t process) {
  return stateOf(process).state != 'Z';
}

std::vector<pid_t> childrenOf(pid_t process) {
  std::vector<pid_t> children;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    const pid_t candidate = std::stoi(name);
    const ProcessState state = stateOf(candidate);
    if (state.parent == process && state.state != 'Z') children.push_back(candidate);
  }
  return children;
}

std::vector<pid_t> descendantsOf(pid_t process) {
  std::vector<pid_t> found = childrenOf(process);
  for (std::size_t i = 0; i < found.size(); ++i) {
    const auto further = childrenOf(found[i]);
    found.insert(found.end(), further.begin(), further.end());
  }
  return found;
}

std::vector<pid_t> descendantsNamed(pid_t process, const std::string& name) {
  std::vector<pid_t> found = descendantsOf(process);
  std::erase_if(found, [&name](pid_t candidate) {
    std::ifstream file("/proc/" + std::to_string(candidate) + "/comm");
    std::string program;
    std::getline(file, program);
    return !program.starts_with(name);
  });
  return found;
}

std::size_t openDescriptors(pid_t process) {
  std::error_code ignored;
  std::size_t count = 0;
  for (const auto& entry :
       fs::directory_iterator("/proc/" + std::to_string(process) + "/fd", ignored)) {
    count += entry.path().empty() ? 0U : 1U;
  }
  return count;
}

double privateMegabytes(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
  std::string line;
  double kilobytes = 0;
  while (std::getline(file, line)) {
    double value = 0;
    if (std::sscanf(line.c_str(), "Private_%*[A-Za-z]: %lf kB", &value) == 1) kilobytes += value;
  }
  return kilobytes * 1024 / 1e6;
}

}  // namespace zovk
