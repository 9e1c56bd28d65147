#pragma once

#include <mutex>

// Clang checks at compile time that guarded members are only used while their mutex is held. Other
// compilers would warn about these attributes, so a macro leaves them out.
#if defined(__clang__)
#define ZOVK_ATTRIBUTE(x) __attribute__((x))
#else
#define ZOVK_ATTRIBUTE(x)
#endif

#define ZOVK_GUARDED_BY(mutex) ZOVK_ATTRIBUTE(guarded_by(mutex))
#define ZOVK_REQUIRES(mutex) ZOVK_ATTRIBUTE(requires_capability(mutex))

namespace zovk {

/// A mutex for clang's thread-safety analysis. Hold it for a few instructions, and never across a
/// callback.
class ZOVK_ATTRIBUTE(capability("mutex")) Mutex {
 public:
  void lock() ZOVK_ATTRIBUTE(acquire_capability()) { mutex_.lock(); }
  void unlock() ZOVK_ATTRIBUTE(release_capability()) { mutex_.unlock(); }
  /// Returns the mutex for a condition variable, which unlocks and locks it itself.
  std::mutex& native() { return mutex_; }

 private:
  std::mutex mutex_;
};

class ZOVK_ATTRIBUTE(scoped_lockable) LockGuard {
 public:
  explicit LockGuard(Mutex& mutex) ZOVK_ATTRIBUTE(acquire_capability(mutex)) : mutex_(mutex) {
    mutex_.lock();
  }
  ~LockGuard() ZOVK_ATTRIBUTE(release_capability()) { mutex_.unlock(); }
  LockGuard(const LockGuard&) = delete;
  LockGuard& operator=(const LockGuard&) = delete;

 private:
  Mutex& mutex_;
};

}  // namespace zovk
