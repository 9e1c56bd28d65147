#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace zovk {

/// The common part of the fuzzers. Each is a file with a function `fuzz`, which plays one input.
void fuzz(std::string_view input);

/// Ends the run, because a condition that must always hold does not hold.
[[noreturn]] inline void fail(const char* what, std::string_view text) {
  std::fprintf(stderr, "%s: %.*s\n", what, static_cast<int>(text.size()), text.data());
  std::abort();
}

/// Splits an input into texts at lines of three dashes. Returns at least `count`; missing ones are
/// empty.
inline std::vector<std::string> sectionsOf(std::string_view input, std::size_t count) {
  constexpr std::string_view kLine = "\n---\n";
  std::vector<std::string> sections;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = input.find(kLine);
    sections.emplace_back(input.substr(0, end));
    if (end != std::string_view::npos) input.remove_prefix(end + kLine.size());
  }
  if (sections.size() < count) sections.resize(count);
  return sections;
}

/// Returns the lines of a text.
inline std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    lines.emplace_back(line);
    text.remove_prefix(std::min(text.size(), line.size() + 1));
  }
  return lines;
}

}  // namespace zovk
