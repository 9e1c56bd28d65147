#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "service/console/PopupStore.h"

namespace zovk::service {

/// Sorts popups as the selection does: the higher priority first.
void sortByPriority(std::vector<WorkedPopup>& popups);

/// Gives the popup at `place` a priority between its neighbours, and raises those above it as far
/// as their order needs. Returns the popups that were changed.
std::vector<WorkedPopup> raiseFrom(std::size_t place, std::vector<WorkedPopup>& order);

/// Returns the largest number of a popup; 0 if there is none. The next one is always a number, too.
std::int32_t largestPopId(const std::vector<WorkedPopup>& popups);

}  // namespace zovk::service
