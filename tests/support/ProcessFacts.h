#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zovk {

/// Facts about running processes, from the kernel's own tables. Processes that have ended but were
/// not waited for do not count.

std::vector<pid_t> childrenOf(pid_t process);
/// Children, their children and so on.
std::vector<pid_t> descendantsOf(pid_t process);
/// Those of them that run a program whose name begins so; the kernel keeps 15 letters of it.
std::vector<pid_t> descendantsNamed(pid_t process, const std::string& name);
bool isAlive(pid_t process);
std::size_t openDescriptors(pid_t process);
/// Memory that belongs to the process alone, in megabytes of 1,000,000 bytes.
double privateMegabytes(pid_t process);

}  // namespace zovk
