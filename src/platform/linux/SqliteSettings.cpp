#include "platform/linux/SqliteSettings.h"

#include <utility>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

constexpr SqliteFile::Manner kManner = {
    // Everything is flushed with each change, the directory too: a setting survives a power cut.
    .prepare =
        "PRAGMA synchronous = EXTRA; CREATE TABLE IF NOT EXISTS settings("
        "key TEXT PRIMARY KEY NOT NULL, value TEXT NOT NULL) WITHOUT ROWID",
    .busyMilliseconds = 2000,
    .keepsCorruptFile = true};

}  // namespace

SqliteSettings::SqliteSettings(std::string path) : file_(path, kManner), path_(std::move(path)) {}

std::optional<std::string> SqliteSettings::value(const std::string& key) const {
  std::optional<std::string> found;
  run("Read setting", "SELECT value FROM settings WHERE key = ?1", {key},
      [&](sqlite3_stmt* row) { found = columnText(row, 0); });
  return found;
}

void SqliteSettings::set(const std::string& key, const std::string& value) {
  run("Save setting", "INSERT OR REPLACE INTO settings(key, value) VALUES(?1, ?2)", {key, value},
      nullptr);
}

void SqliteSettings::remove(const std::string& key) {
  run("Remove setting", "DELETE FROM settings WHERE key = ?1", {key}, nullptr);
}

void SqliteSettings::run(const char* purpose, const char* sql,
                         const std::vector<std::string>& values, const SqliteFile::Row& row) const {
  const auto bind = [&values](sqlite3_stmt* statement) {
    int code = SQLITE_OK;
    int index = 0;
    for (const std::string& value : values) {
      if (code == SQLITE_OK) code = bindText(statement, ++index, value);
    }
    return code;
  };
  SqliteFile::Outcome outcome;
  {
    const LockGuard lock(mutex_);
    outcome = file_.run(sql, bind, row);
  }
  // The log may be the host's own code, so it is not called with the lock held.
  if (outcome.begunAfresh) logError("Settings file:%@ is corrupt, begun afresh", path_);
  if (outcome.code != SQLITE_OK) {
    logError("%@ failed, error:%@", purpose, sqlite3_errstr(outcome.code));
  }
}

}  // namespace zovk
