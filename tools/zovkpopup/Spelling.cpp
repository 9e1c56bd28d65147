#include "zovkpopup/Spelling.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zovk::tool {
namespace {

// Returns how many letters must be added, left out or changed to get from one word to the other.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
    }
  }
  return row.back();
}

}  // namespace

std::string_view nearestWord(std::string_view word, const std::vector<std::string_view>& known) {
  constexpr std::size_t kFarthest = 2;
  std::string_view best;
  std::size_t least = kFarthest + 1;
  for (const std::string_view candidate : known) {
    const std::size_t off = distance(word, candidate);
    if (off >= least) continue;
    least = off;
    best = candidate;
  }
  return best;
}

}  // namespace zovk::tool
