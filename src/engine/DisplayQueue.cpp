#include "engine/DisplayQueue.h"

#include <utility>

namespace zovk {

void DisplayQueue::push(QueueEntry entry) {
  const LockGuard lock(mutex_);
  entries_.push_back(std::move(entry));
}

std::optional<QueueEntry> DisplayQueue::front() const {
  const LockGuard lock(mutex_);
  if (entries_.empty()) return std::nullopt;
  return entries_.front();
}

bool DisplayQueue::takeScreenFor(const QueueEntry& entry) {
  const LockGuard lock(mutex_);
  if (entries_.empty() || entries_.front() != entry) return false;
  return !std::exchange(isScreenTaken_, true);
}

void DisplayQueue::leaveScreen() {
  const LockGuard lock(mutex_);
  isScreenTaken_ = false;
}

void DisplayQueue::finish(const QueueEntry& entry) {
  const LockGuard lock(mutex_);
  std::erase(entries_, entry);
  isScreenTaken_ = false;
}

// An entry may own what waits for it, so the entries end after the lock is free again.
void DisplayQueue::drop() {
  std::deque<QueueEntry> dropped;
  const LockGuard lock(mutex_);
  dropped.swap(entries_);
}

bool DisplayQueue::setHeldBack(bool heldBack) {
  const LockGuard lock(mutex_);
  isHeldBack_ = heldBack;
  return !isHeldBack_ && !isScreenTaken_ && !entries_.empty();
}

bool DisplayQueue::isScreenTaken() const {
  const LockGuard lock(mutex_);
  return isScreenTaken_;
}

bool DisplayQueue::isHeldBack() const {
  const LockGuard lock(mutex_);
  return isHeldBack_;
}

std::deque<QueueEntry> DisplayQueue::entries() const {
  const LockGuard lock(mutex_);
  return entries_;
}

}  // namespace zovk
