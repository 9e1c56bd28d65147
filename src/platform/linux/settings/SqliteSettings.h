#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/settings/SqliteFile.h"
#include "support/LineLimit.h"
#include "zovkpopup/ThreadSafety.h"
#include "zovkpopup/platform/SettingsStore.h"

namespace zovk {

/// Settings in one SQLite file, opened on first use. Several processes may share it. Any thread.
/// Every change is on disk when the call returns, unless another process holds the file: the first
/// call that finds it held waits for a moment, later ones do not. Until the file is free again,
/// reads return the values known so far. Changes wait: they count at once, and a later call or
/// `keepQueued` writes them. A file that is not a database is moved to "settings.db.corrupt", and a
/// new one is begun.
class SqliteSettings : public SettingsStore {
 public:
  /// How long a call waits for another process.
  static constexpr std::chrono::milliseconds kPatience{40};

  explicit SqliteSettings(std::string path);

  std::optional<std::string> value(const std::string& key) const override;
  void set(const std::string& key, const std::string& value) override;
  void remove(const std::string& key) override;
  bool isReadable() const override;
  void synchronize() override {}  // what could be written is

  /// Tries again to write the waiting changes.
  void keepQueued(std::chrono::milliseconds patience);
  /// Does the same at most once a second, without waiting. Meant to be called often.
  void keepQueuedNowAndThen();

 private:
  using Lines = std::vector<std::string>;
  using Values = std::map<std::string, std::optional<std::string>>;  // absent: not in the file

  void change(const std::string& key, std::optional<std::string> value);
  void writeQueued(std::chrono::milliseconds patience, Lines& lines) const ZOVK_REQUIRES(mutex_);
  /// Returns true if the statement has run.
  bool run(const char* purpose, const char* sql, const std::vector<std::string>& values,
           const SqliteFile::Row& row, std::chrono::milliseconds patience, Lines& lines) const
      ZOVK_REQUIRES(mutex_);
  std::chrono::milliseconds patience() const ZOVK_REQUIRES(mutex_);

  const std::string path_;
  mutable LineLimit readFailures_;
  mutable LineLimit writeFailures_;
  mutable Mutex mutex_;
  mutable SqliteFile file_ ZOVK_GUARDED_BY(mutex_);
  mutable Values known_ ZOVK_GUARDED_BY(mutex_);
  mutable Values queued_ ZOVK_GUARDED_BY(mutex_);
  mutable bool locked_ ZOVK_GUARDED_BY(mutex_) = false;  // when it was last tried
  std::chrono::steady_clock::time_point tryAgain_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
