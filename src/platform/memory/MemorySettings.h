#pragma once

#include <map>
#include <optional>
#include <string>

#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/SettingsStore.h"

namespace zovk {

/// Settings in memory that distinguish values on disk from values that are not yet there. Any
/// thread.
class MemorySettings final : public SettingsStore {
 public:
  std::optional<std::string> value(const std::string& key) const override;
  void set(const std::string& key, const std::string& value) override;
  void remove(const std::string& key) override;
  void synchronize() override;
  bool isReadable() const override;

  std::map<std::string, std::string> all() const;
  /// Returns the values that a start after a crash would find.
  std::map<std::string, std::string> saved() const;
  /// Acts like a crash: goes back to the saved values.
  void dropUnsaved();
  /// From now on, loses every change, or keeps changes again.
  void loseWrites(bool lose);
  int synchronizeCount() const;
  /// Acts as if another process held the store: from now on no value is found in it.
  void setLocked(bool locked);

 private:
  mutable Mutex mutex_;
  std::map<std::string, std::string> values_ ZOVK_GUARDED_BY(mutex_);
  std::map<std::string, std::string> saved_ ZOVK_GUARDED_BY(mutex_);
  bool loseWrites_ ZOVK_GUARDED_BY(mutex_) = false;
  bool locked_ ZOVK_GUARDED_BY(mutex_) = false;
  int synchronizeCount_ ZOVK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zovk
