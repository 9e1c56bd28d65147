#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "record/ZOVKPopupModel.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {

/// A host's callback as the queue holds it: null for none, one object for each request, so that
/// two requests are told apart by it.
using CallbackPointer = std::shared_ptr<const ZOVKPopupComplete>;

/// One request to show popups: the popups in showing order, and who hears the answer. Both may be
/// absent.
struct QueueEntry {
  PopupList popups;
  CallbackPointer complete;
  friend bool operator==(const QueueEntry&, const QueueEntry&) = default;
};

/// The requests that wait, oldest first; whether one of them has the screen, and whether the game
/// holds them back. Any thread.
class DisplayQueue {
 public:
  void push(QueueEntry entry);
  /// The oldest entry, which stays; absent when the queue is empty.
  std::optional<QueueEntry> front() const;
  /// Gives the screen to `entry`. False when the screen is taken, or when `entry` is no longer the
  /// oldest: it has ended on another thread, which goes on with the queue.
  bool takeScreenFor(const QueueEntry& entry);
  /// Gives the screen back; the entry that had it stays in the queue.
  void leaveScreen();
  /// Gives the screen back and drops all entries equal to `entry`.
  void finish(const QueueEntry& entry);
  /// Drops all entries, unanswered.
  void drop();
  /// Returns whether something waits now that could be shown.
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
