#pragma once

#include <utility>

#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// A value with its own lock. Any thread.
template <class T>
class Guarded {
 public:
  /// Returns a copy of the present value.
  T get() const {
    const LockGuard lock(mutex_);
    return value_;
  }
  /// Replaces the value. The earlier one is destroyed after the lock is released.
  void set(T value) {
    const LockGuard lock(mutex_);
    std::swap(value_, value);
  }
  /// Calls `use` with the value while it is locked, and returns its result. `use` must not call
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
