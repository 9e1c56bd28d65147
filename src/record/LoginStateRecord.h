#pragma once

#include <utility>

#include "record/ZOVKPopupLoginStateModel.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// The one login state of the engine, shared with the popups on screen: what the host sets while a
/// popup is up reaches that popup's report. Any thread.
class LoginStateRecord {
 public:
  void set(ZOVKPopupLoginStateModel state) {
    const LockGuard lock(mutex_);
    state_ = std::move(state);
  }
  /// The state of the moment, all four values of one call of the host.
  ZOVKPopupLoginStateModel snapshot() const {
    const LockGuard lock(mutex_);
    return state_;
  }

 private:
  mutable Mutex mutex_;
  ZOVKPopupLoginStateModel state_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
