#pragma once

#include <chrono>

#include "support/UniqueFd.h"

namespace zovk {

/// Returns a timer that never comes due until `setTimer` is called. Throws std::system_error if the
/// process has no descriptors left.
UniqueFd openTimer();

/// Makes the timer readable after `first`, and then every `interval` if that is not zero. A `first`
/// of zero stops it.
void setTimer(const UniqueFd& timer, std::chrono::milliseconds first,
              std::chrono::milliseconds interval = {});

}  // namespace zovk
