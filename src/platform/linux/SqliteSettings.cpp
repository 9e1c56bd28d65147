#include "platform/linux/SqliteSettings.h"

#include <cstdio>
#include <utility>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr const char* kCreate =
    "CREATE TABLE IF NOT EXISTS settings("
    "key TEXT PRIMARY KEY NOT NULL, value TEXT NOT NULL) WITHOUT ROWID";

bool isCorrupt(int code) {
  return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

}  // namespace

std::optional<std::string> SqliteSettings::value(const std::string& key) const {
  std::optional<std::string> found;
  run("Read setting", {"SELECT value FROM settings WHERE key = ?1", {key}, [&](sqlite3_stmt* row) {
                         found = columnText(row, 0);
                       }});
  return found;
}

void SqliteSettings::set(const std::string& key, const std::string& value) {
  run("Save setting",
      {"INSERT OR REPLACE INTO settings(key, value) VALUES(?1, ?2)", {key, value}, nullptr});
}

void SqliteSettings::remove(const std::string& key) {
  run("Remove setting", {"DELETE FROM settings WHERE key = ?1", {key}, nullptr});
}

void SqliteSettings::run(const char* purpose, const Query& query) const {
  std::string error;
  bool putAside = false;
  {
    const LockGuard lock(mutex_);
    putAside = tryRepairing(query, error);
  }
  // The log may be the host's own code, so it is not called with the lock held.
  if (putAside) logError("Settings file:%@ is corrupt, begun afresh", path_);
  if (!error.empty()) logError("%@ failed, error:%@", purpose, error);
}

// True when the file had to be put aside.
bool SqliteSettings::tryRepairing(const Query& query, std::string& error) const {
  if (!isCorrupt(tryOnce(query, error))) return false;
  // Another process may have put a new file in place meanwhile, so look again before acting.
  if (!isCorrupt(tryOnce(query, error))) return false;
  putAside();
  tryOnce(query, error);
  return true;
}

int SqliteSettings::tryOnce(const Query& query, std::string& error) const {
  int code = open();
  if (code == SQLITE_OK) code = execute(query);
  error = code == SQLITE_OK ? "" : sqlite3_errstr(code);
  if (isCorrupt(code)) database_.reset();
  return code;
}

int SqliteSettings::open() const {
  if (database_) return SQLITE_OK;
  makePrivateFile(path_);
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  database_.reset(opened);  // there is a handle to close even if opening failed
  if (opened == nullptr) return SQLITE_NOMEM;
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
  // Everything is flushed with each change, the directory too: a setting survives a power cut.
  if (code == SQLITE_OK) code = execute({"PRAGMA synchronous = EXTRA", {}, nullptr});
  if (code == SQLITE_OK) code = execute({kCreate, {}, nullptr});
  if (code != SQLITE_OK) database_.reset();
  return code;
}

int SqliteSettings::execute(const Query& query) const {
  sqlite3_stmt* prepared = nullptr;
  int code = sqlite3_prepare_v2(database_.get(), query.sql, -1, &prepared, nullptr);
  const SqliteStatement statement(prepared);
  int index = 0;
  for (const std::string& value : query.values) {
    if (code == SQLITE_OK) code = bindText(prepared, ++index, value);
  }
  if (code != SQLITE_OK) return code;
  while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
    if (query.row) query.row(prepared);
  }
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

void SqliteSettings::putAside() const {
  const std::string aside = path_ + ".corrupt";
  std::rename(path_.c_str(), aside.c_str());
  // What was left of an unfinished change belongs to the old file.
  std::rename((path_ + "-journal").c_str(), (aside + "-journal").c_str());
}

}  // namespace zovk
