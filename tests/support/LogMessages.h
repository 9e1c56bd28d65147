#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "platform/memory/MemoryLog.h"

namespace zovk {

/// Returns the messages of the debug lines of one class, in order.
inline std::vector<std::string> debugMessages(const MemoryLog& log,
                                              std::string_view fileName = "ZOVKPopupManager") {
  std::vector<std::string> messages;
  const std::string start = "[Debug]" + std::string(fileName) + " ";
  for (const std::string& line : log.lines()) {
    if (!line.starts_with(start)) continue;
    const std::size_t function = line.find(' ', start.size());  // its end
    messages.push_back(line.substr(line.find(' ', function + 1) + 1));
  }
  return messages;
}

inline std::vector<std::string> controllerMessages(const MemoryLog& log) {
  return debugMessages(log, "ZOVKPopupViewController");
}

/// Returns the messages of all error lines, in order.
inline std::vector<std::string> errorMessages(const MemoryLog& log) {
  constexpr std::string_view kStart = "[Error] ";
  std::vector<std::string> messages;
  for (const std::string& line : log.lines()) {
    if (line.starts_with(kStart)) messages.push_back(line.substr(kStart.size()));
  }
  return messages;
}

}  // namespace zovk
