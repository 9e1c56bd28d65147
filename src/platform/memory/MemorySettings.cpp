#include "platform/memory/MemorySettings.h"

namespace zovk {

std::optional<std::string> MemorySettings::value(const std::string& key) const {
  const LockGuard lock(mutex_);
  const auto found = values_.find(key);
  return locked_ || found == values_.end() ? std::nullopt : std::optional(found->second);
}

void MemorySettings::set(const std::string& key, const std::string& value) {
  const LockGuard lock(mutex_);
  if (!loseWrites_) values_[key] = value;
}

void MemorySettings::remove(const std::string& key) {
  const LockGuard lock(mutex_);
  if (!loseWrites_) values_.erase(key);
}

void MemorySettings::synchronize() {
  const LockGuard lock(mutex_);
  saved_ = values_;
  ++synchronizeCount_;
}

bool MemorySettings::isReadable() const {
  const LockGuard lock(mutex_);
  return !locked_;
}

void MemorySettings::setLocked(bool locked) {
  const LockGuard lock(mutex_);
  locked_ = locked;
}

std::map<std::string, std::string> MemorySettings::all() const {
  const LockGuard lock(mutex_);
  return values_;
}

std::map<std::string, std::string> MemorySettings::saved() const {
  const LockGuard lock(mutex_);
  return saved_;
}

void MemorySettings::dropUnsaved() {
  const LockGuard lock(mutex_);
  values_ = saved_;
}

void MemorySettings::loseWrites(bool lose) {
  const LockGuard lock(mutex_);
  loseWrites_ = lose;
}

int MemorySettings::synchronizeCount() const {
  const LockGuard lock(mutex_);
  return synchronizeCount_;
}

}  // namespace zovk
