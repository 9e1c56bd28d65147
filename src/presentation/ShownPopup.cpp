#include "presentation/ShownPopup.h"

namespace zovk {

PopupPointer ShownPopup::current() const {
  const LockGuard lock(mutex_);
  return current_;
}

// The popup that goes is let go of after the lock.
void ShownPopup::setCurrent(PopupPointer popup) {
  const LockGuard lock(mutex_);
  current_.swap(popup);
}

PopupPointer ShownPopup::toRefresh() const {
  const LockGuard lock(mutex_);
  return toRefresh_;
}

void ShownPopup::setToRefresh(PopupPointer popup) {
  const LockGuard lock(mutex_);
  toRefresh_.swap(popup);
}

}  // namespace zovk
