#pragma once

#include <cctype>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/memory/MemoryLog.h"

namespace zovk {

namespace logLines {

inline bool isIdentifier(std::string_view text) {
  for (const char c : text) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '_') return false;
  }
  return !text.empty();
}

/// Removes the part before the next blank from `rest`, and returns it.
inline std::string_view takeWord(std::string_view& rest) {
  const std::size_t blank = rest.find(' ');
  const std::string_view word = rest.substr(0, blank);
  rest.remove_prefix(blank == std::string_view::npos ? rest.size() : blank + 1);
  return word;
}

inline bool isLineNumber(std::string_view text) {
  if (text.empty() || text.front() == '0') return false;
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Returns "D operation: message" for a well-formed debug line, else the line behind "MALFORMED ".
inline std::string shortDebugLine(const std::string& line) {
  std::string_view rest = std::string_view(line).substr(std::string_view("[Debug]").size());
  const std::string_view fileName = takeWord(rest);
  const std::string_view function = takeWord(rest);
  const std::string_view number = takeWord(rest);
  const std::string prefix = std::string(fileName) + "::";
  const bool wellMade = isIdentifier(fileName) && function.starts_with(prefix) &&
                        isIdentifier(function.substr(prefix.size())) && isLineNumber(number);
  if (!wellMade) return "MALFORMED " + line;
  return "D " + std::string(function.substr(prefix.size())) + ": " + std::string(rest);
}

}  // namespace logLines

/// Returns a log line without the parts that a test cannot know: "D operation: message" for a debug
/// line whose file name is the operation's class and whose line number is one, "E message" for an
/// error line, and any other line unchanged.
inline std::string shortLine(const std::string& line) {
  constexpr std::string_view kError = "[Error] ";
  if (line.starts_with("[Debug]")) return logLines::shortDebugLine(line);
  if (line.starts_with(kError)) return "E " + line.substr(kError.size());
  return line;
}

/// Returns who wrote the debug lines whose message begins with this text: "Class Class::operation"
/// for each, or the whole line behind "MALFORMED " if there is no line number.
inline std::set<std::string> ownersOf(const MemoryLog& log, std::string_view messageStart) {
  constexpr std::string_view kDebug = "[Debug]";
  std::set<std::string> owners;
  for (const std::string& line : log.lines()) {
    if (!line.starts_with(kDebug)) continue;
    std::string_view rest = std::string_view(line).substr(kDebug.size());
    const std::string_view fileName = logLines::takeWord(rest);
    const std::string_view function = logLines::takeWord(rest);
    const std::string_view number = logLines::takeWord(rest);
    if (!rest.starts_with(messageStart)) continue;
    const bool wellMade = logLines::isLineNumber(number);
    owners.insert(wellMade ? std::string(fileName) + " " + std::string(function)
                           : "MALFORMED " + line);
  }
  return owners;
}

inline std::vector<std::string> shortLines(const MemoryLog& log) {
  std::vector<std::string> result;
  for (const std::string& line : log.lines()) result.push_back(shortLine(line));
  return result;
}

}  // namespace zovk
