#include "hostile/Tally.h"

#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>

namespace zovk {

Tally::~Tally() {
  std::size_t tried = 0;
  std::string text;
  for (const auto& [outcome, count] : outcomes_) {
    tried += count;
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, outcome);
  }
  fmt::print("hostile: {}: {} tried: {}\n", trial_, tried, text);
  for (auto& [what, values] : figures_) {
    std::sort(values.begin(), values.end());
    fmt::print("hostile: {}: {}: median {:.2f}, largest {:.2f}\n", trial_, what,
               values[values.size() / 2], values.back());
  }
  std::fflush(stdout);
}

std::size_t rounds(std::size_t quick, std::size_t full) {
  return std::getenv("ZOVKPOPUP_HOSTILE_FULL") != nullptr ? full : quick;
}

}  // namespace zovk
