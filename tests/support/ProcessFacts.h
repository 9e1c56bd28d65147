#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zovk {

/// Facts about running processes, from the kernel's own tables. Processes that have ended but were
/// not waited for do not count.

std::vector<pid_t> childrenOf(pid_t process);
/// Returns the children, their children and so on.
std::vector<pid_t> descendantsOf(pid_t process);
/// Returns those descendants that run a program whose name begins with this text; the kernel keeps
/// 15 letters of it.
std::vector<pid_t> descendantsNamed(pid_t process, const std::string& name);
bool isAlive(pid_t process);
std::size_t openDescriptors(pid_t process);
/// Returns the private memory of the process in megabytes of 1,000,000 bytes.
double privateMegabytes(pid_t process);

}  // namespace zovk
