#include "helper/page/OpenLimit.h"

#include <utility>

namespace zovk::helper {

void OpenLimit::playerActed(Time now) {
  lastInput_ = now;
  left_ = kForEachInput;
}

bool OpenLimit::take(Time now) {
  if (now - lastInput_ > kInputCounts) left_ = 0;
  if (left_ == 0) return std::exchange(freeOne_, false);
  --left_;
  return true;
}

std::optional<std::string> OpenLimit::refusalLine() {
  return lines_.line("helper: an address was not opened: no click or key came before it");
}

}  // namespace zovk::helper
