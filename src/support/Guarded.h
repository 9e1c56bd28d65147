#pragma once

#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// A value with a lock of its own. Any thread.
template <class T>
class Guarded {
 public:
  /// The value of the moment.
  T get() const {
    const LockGuard lock(mutex_);
    return value_;
  }
  /// The earlier value ends after the lock is free again.
  void set(T value) {
    const LockGuard lock(mutex_);
    std::swap(value_, value);
  }
  /// Calls `use` with the value while it is locked; gives what `use` gives. `use` must not call
  /// back into this object.
  template <class Use>
  auto with(Use&& use) {
    const LockGuard lock(mutex_);
    return std::forward<Use>(use)(value_);
  }
  template <class Use>
  auto with(Use&& use) const {
    const LockGuard lock(mutex_);
    return std::forward<Use>(use)(value_);
  }

 private:
  mutable Mutex mutex_;
  T value_ ZOVK_GUARDED_BY(mutex_){};
};

}  // namespace zovk
