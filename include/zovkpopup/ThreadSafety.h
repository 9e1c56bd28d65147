#pragma once

#include <mutex>

// Clang checks at compile time that what a mutex guards is only touched with it held. Attributes
// have no other spelling that other compilers ignore quietly.
#if defined(__clang__)
#define ZOVK_ATTRIBUTE(x) __attribute__((x))
#else
#define ZOVK_ATTRIBUTE(x)
#endif

#define ZOVK_GUARDED_BY(mutex) ZOVK_ATTRIBUTE(guarded_by(mutex))
#define ZOVK_REQUIRES(mutex) ZOVK_ATTRIBUTE(requires_capability(mutex))

namespace zovk {

/// A mutex that clang's analysis knows about. Held for a few instructions, never across a callback.
class ZOVK_ATTRIBUTE(capability("mutex")) Mutex {
 public:
  void lock() ZOVK_ATTRIBUTE(acquire_capability()) { mutex_.lock(); }
  void unlock() ZOVK_ATTRIBUTE(release_capability()) { mutex_.unlock(); }
  /// For a condition variable, which unlocks and relocks on its own.
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
