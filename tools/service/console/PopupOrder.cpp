#include "service/console/PopupOrder.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "service/console/EntryFields.h"

namespace zovk::service {

void sortByPriority(std::vector<WorkedPopup>& popups) {
  std::stable_sort(popups.begin(), popups.end(), [](const auto& left, const auto& right) {
    return numberIn(left.entry, "priority") > numberIn(right.entry, "priority");
  });
}

std::vector<WorkedPopup> raiseFrom(std::size_t place, std::vector<WorkedPopup>& order) {
  std::vector<WorkedPopup> changed;
  std::int64_t least = place + 1 < order.size() ? numberIn(order[place + 1].entry, "priority") + 1
                       : place == 0             ? 0
                                                : numberIn(order[place - 1].entry, "priority") - 1;
  order[place].entry["priority"] = least;
  changed.push_back(order[place]);
  for (std::size_t i = place; i-- > 0;) {
    ++least;
    if (numberIn(order[i].entry, "priority") >= least) break;
    order[i].entry["priority"] = least;
    changed.push_back(order[i]);
  }
  return changed;
}

std::int32_t largestPopId(const std::vector<WorkedPopup>& popups) {
  std::int64_t largest = 0;
  for (const WorkedPopup& popup : popups) {
    largest = std::max(largest, numberIn(popup.entry, "pop_id"));
  }
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(largest, std::numeric_limits<std::int32_t>::max() - 1));
}

}  // namespace zovk::service
