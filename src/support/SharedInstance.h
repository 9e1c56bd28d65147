#pragma once

#include <atomic>
#include <memory>
#include <mutex>

namespace zovk {

/// Holds the only object of a class in a process. `shared` takes a locked path until the object is
/// ready, and an unlocked read from then on. `purge` goes back to the locked path. Any thread. An
/// object that was purged must not be used any more.
///
/// `T` needs `static std::shared_ptr<T> make()` and `void init()`.
template <class T>
class SharedInstance {
 public:
  /// Returns the holder of the process. It is never destroyed, so that threads that still run while
  /// the process exits do not use a half-destroyed object.
  static SharedInstance& holder() {
    static auto* const instance = new SharedInstance;
    return *instance;
  }

  T* shared() {
    T* const ready = ready_.load(std::memory_order_acquire);
    return ready != nullptr ? ready : sharedSynch();
  }

  T* sharedSynch() {
    const std::lock_guard lock(mutex_);
    if (instance_ == nullptr) {
      instance_ = T::make();
      if (instance_ == nullptr) return nullptr;
      instance_->init();
      ready_.store(instance_.get(), std::memory_order_release);
    }
    return instance_.get();
  }

  T* sharedNoSynch() const { return ready_.load(std::memory_order_acquire); }

  /// Makes the object, if there is none yet, without initialising it. Returns the object.
  T* allocate() {
    const std::lock_guard lock(mutex_);
    if (instance_ == nullptr) {
      instance_ = T::make();
      ready_.store(instance_.get(), std::memory_order_release);
    }
    return instance_.get();
  }

  void purge() {
    const std::lock_guard lock(mutex_);
    ready_.store(nullptr, std::memory_order_release);
    instance_.reset();
  }

 private:
  // Re-entrant: making the object may ask for it again on the same thread.
  std::recursive_mutex mutex_;
  std::shared_ptr<T> instance_;
  std::atomic<T*> ready_{nullptr};
};

}  // namespace zovk
