#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/SettingsStore.h"
#include "platform/linux/SqliteFile.h"
#include "support/ThreadSafety.h"

namespace zovk {

/// Settings in one SQLite file, opened on first use. Several processes may share it. Any thread;
/// a call waits up to two seconds for another process. Every change is on disk when the call
/// returns. A file that is no database is put aside as "settings.db.corrupt" and begun afresh.
class SqliteSettings : public SettingsStore {
 public:
  explicit SqliteSettings(std::string path);

  std::optional<std::string> value(const std::string& key) const override;
  void set(const std::string& key, const std::string& value) override;
  void remove(const std::string& key) override;
  void synchronize() override {}  // nothing is held back

 private:
  void run(const char* purpose, const char* sql, const std::vector<std::string>& values,
           const SqliteFile::Row& row) const;

  mutable Mutex mutex_;
  mutable SqliteFile file_ ZOVK_GUARDED_BY(mutex_);
  const std::string path_;
};

}  // namespace zovk
