#include "storage/CommaList.h"

#include <cstddef>

namespace zovk {

std::unordered_set<std::string_view> itemsBetweenCommas(std::string_view text) {
  std::unordered_set<std::string_view> items;
  while (true) {
    const std::size_t end = text.find(',');
    items.insert(text.substr(0, end));
    if (end == std::string_view::npos) return items;
    text.remove_prefix(end + 1);
  }
}

}  // namespace zovk
