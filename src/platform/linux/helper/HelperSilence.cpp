#include "platform/linux/helper/HelperSilence.h"

#include <algorithm>
#include <utility>

namespace zovk {

void HelperSilence::begin(TimePoint now) {
  looked_ = now;
  silent_ = {};
}

bool HelperSilence::isTooLong(TimePoint now) {
  silent_ += std::min(now - std::exchange(looked_, now), longestGap_);
  return silent_ >= bound_;
}

}  // namespace zovk
