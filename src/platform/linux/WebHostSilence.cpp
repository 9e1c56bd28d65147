#include "platform/linux/WebHostSilence.h"

#include <algorithm>
#include <utility>

namespace zovk {

void WebHostSilence::begin(TimePoint now) {
  looked_ = now;
  silent_ = {};
}

bool WebHostSilence::isTooLong(TimePoint now) {
  silent_ += std::min(now - std::exchange(looked_, now), longestGap_);
  return silent_ >= bound_;
}

}  // namespace zovk
