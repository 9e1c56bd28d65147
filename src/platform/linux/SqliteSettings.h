#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/SettingsStore.h"
#include "platform/linux/SqliteHandles.h"
#include "support/ThreadSafety.h"

namespace zovk {

/// Settings in one SQLite file, opened on first use. Several processes may share it. Any thread;
/// a call waits up to two seconds for another process. Every change is on disk when the call
/// returns. A file that is no database is put aside as "settings.db.corrupt" and begun afresh.
class SqliteSettings : public SettingsStore {
 public:
  explicit SqliteSettings(std::string path) : path_(std::move(path)) {}

  std::optional<std::string> value(const std::string& key) const override;
  void set(const std::string& key, const std::string& value) override;
  void remove(const std::string& key) override;
  void synchronize() override {}  // nothing is held back

 private:
  using Row = std::function<void(sqlite3_stmt*)>;
  struct Query {
    const char* sql;
    std::vector<std::string> values;
    Row row;  // may be empty
  };
  void run(const char* purpose, const Query& query) const;
  bool tryRepairing(const Query& query, std::string& error) const ZOVK_REQUIRES(mutex_);
  int tryOnce(const Query& query, std::string& error) const ZOVK_REQUIRES(mutex_);
  int open() const ZOVK_REQUIRES(mutex_);
  int execute(const Query& query) const ZOVK_REQUIRES(mutex_);
  void putAside() const ZOVK_REQUIRES(mutex_);

  const std::string path_;
  mutable Mutex mutex_;
  mutable SqliteDatabase database_ ZOVK_GUARDED_BY(mutex_);  // null until it could be opened
};

}  // namespace zovk
