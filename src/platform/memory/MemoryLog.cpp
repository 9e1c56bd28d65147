#include "platform/memory/MemoryLog.h"

#include <algorithm>

namespace zovk {

void MemoryLog::writeLine(std::string_view line) {
  const LockGuard lock(lines_->mutex);
  lines_->all.emplace_back(line);
}

std::vector<std::string> MemoryLog::lines() const {
  const LockGuard lock(lines_->mutex);
  return lines_->all;
}

std::vector<std::string> MemoryLog::linesContaining(std::string_view text) const {
  auto found = lines();
  std::erase_if(found, [text](const auto& line) { return line.find(text) == std::string::npos; });
  return found;
}

std::size_t MemoryLog::count(std::string_view text) const {
  return linesContaining(text).size();
}

void MemoryLog::clear() {
  const LockGuard lock(lines_->mutex);
  lines_->all.clear();
}

LogEnvironment memoryLogEnvironment(const MemoryLog& log, bool debug) {
  LogEnvironment environment;
  environment.writeLine = [copy = log](std::string_view line) mutable { copy.writeLine(line); };
  environment.infoFlag = [debug](std::string_view key) { return debug && key == "ZOVK_DEBUG"; };
  return environment;
}

}  // namespace zovk
