#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "record/ZOVKPopupModel.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {

/// A host's callback in the queue. Null means no callback. Each request has its own object, which
/// tells it from other requests.
using CallbackPointer = std::shared_ptr<const ZOVKPopupComplete>;

/// A waiting request: popups in showing order, and the callback. Both may be empty.
struct QueueEntry {
  PopupList popups;
  CallbackPointer complete;
  friend bool operator==(const QueueEntry&, const QueueEntry&) = default;
};

/// The waiting requests, oldest first. Knows whether one of them has the screen, and whether the
/// game holds them back. Any thread.
class DisplayQueue {
 public:
  void push(QueueEntry entry);
  /// Returns the oldest entry, which stays in the queue; nothing if the queue is empty.
  std::optional<QueueEntry> front() const;
  /// Gives the screen to `entry`. Returns false if the screen is taken, or if `entry` is no longer
  /// the oldest: it has then ended on another thread, which goes on with the queue.
  bool takeScreenFor(const QueueEntry& entry);
  /// Gives the screen back; the entry that had it stays in the queue.
  void leaveScreen();
  /// Gives the screen back and drops all entries equal to `entry`.
  void finish(const QueueEntry& entry);
  /// Drops all entries without calling back.
  void drop();
  /// Holds requests back or ends that. Returns whether a waiting request can be shown now.
  bool setHeldBack(bool heldBack);

  bool isScreenTaken() const;
  bool isHeldBack() const;
  std::deque<QueueEntry> entries() const;

 private:
  mutable Mutex mutex_;
  std::deque<QueueEntry> entries_ ZOVK_GUARDED_BY(mutex_);
  bool isScreenTaken_ ZOVK_GUARDED_BY(mutex_) = false;
  bool isHeldBack_ ZOVK_GUARDED_BY(mutex_) = false;
};

}  // namespace zovk
