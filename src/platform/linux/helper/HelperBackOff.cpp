#include "platform/linux/helper/HelperBackOff.h"

#include <algorithm>

namespace zovk {

void HelperBackOff::gaveUp(TimePoint now) {
  next_ = now + pause_;
  pause_ = std::clamp(pause_ * 2, kShortest, kLongest);
  held_ = true;
}

}  // namespace zovk
