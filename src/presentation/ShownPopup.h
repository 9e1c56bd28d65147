#pragma once

#include "record/ZOVKPopupModel.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// The popup on screen, and the one that the refresh button loads. Any thread: a condition's answer
/// comes on the session's thread.
class ShownPopup {
 public:
  /// Returns the popup on screen; null before the first and after the end.
  PopupPointer current() const;
  void setCurrent(PopupPointer popup);
  PopupPointer toRefresh() const;
  void setToRefresh(PopupPointer popup);

 private:
  mutable Mutex mutex_;
  PopupPointer current_ ZOVK_GUARDED_BY(mutex_);
  PopupPointer toRefresh_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
