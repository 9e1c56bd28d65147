#include "platform/linux/settings/SqliteFile.h"

#include <array>
#include <cstdio>
#include <thread>

#include "platform/linux/system/PrivateFile.h"

namespace zovk {
namespace {

bool isCorrupt(int code) {
  return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

int step(sqlite3_stmt* statement, const SqliteFile::Row& row) {
  int code = SQLITE_OK;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    if (row) row(statement);
  }
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

// SQLite gives the files that it makes beside a database the database's mode; older ones may have
// another. Returns false if one of them is not a file, because the database must then not be
// opened.
bool isPrivateDatabase(const std::string& path) {
  constexpr std::array<const char*, 3> kParts = {"-journal", "-wal", "-shm"};
  bool usable = makePrivateFile(path);
  for (const char* part : kParts) usable = usable && keepPrivateFile(path + part);
  return usable;
}

}  // namespace

SqliteFile::Outcome SqliteFile::run(const char* sql, const Bind& bind, const Row& row,
                                    std::chrono::milliseconds patience) {
  deadline_ = std::chrono::steady_clock::now() + patience;
  int code = tryOnce(sql, bind, row);
  // Another process may have put a new file in place meanwhile, so look again before acting.
  if (isCorrupt(code)) code = tryOnce(sql, bind, row);
  if (!isCorrupt(code)) return {code, false};
  getOutOfTheWay();
  return {tryOnce(sql, bind, row), true};
}

int SqliteFile::tryOnce(const char* sql, const Bind& bind, const Row& row) {
  int code = open();
  if (code == SQLITE_OK) code = execute(sql, bind, row);
  if (isCorrupt(code)) close();
  return code;
}

int SqliteFile::open() {
  if (database_) return SQLITE_OK;
  if (!isPrivateDatabase(path_)) return SQLITE_CANTOPEN;
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  database_.reset(opened);  // there is a handle to close even if opening failed
  if (opened == nullptr) return SQLITE_NOMEM;
  sqlite3_busy_handler(opened, &SqliteFile::waitForOthers, this);
  if (code == SQLITE_OK) code = sqlite3_exec(opened, manner_.prepare, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) database_.reset();
  return code;
}

int SqliteFile::execute(const char* sql, const Bind& bind, const Row& row) {
  SqliteStatement& prepared = prepared_[sql];
  if (!prepared) {
    const int code = prepare(sql, prepared);
    if (code != SQLITE_OK) return code;
  }
  int code = bind(prepared.get());
  if (code == SQLITE_OK) code = step(prepared.get(), row);
  // Lets go of the file, and of the values, which live no longer.
  sqlite3_reset(prepared.get());
  sqlite3_clear_bindings(prepared.get());
  return code;
}

int SqliteFile::prepare(const char* sql, SqliteStatement& prepared) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr);
  prepared.reset(statement);
  return code;
}

void SqliteFile::close() {
  prepared_.clear();
  database_.reset();
}

// Returns 0 if SQLite is to give up, and another number if it is to try again.
int SqliteFile::waitForOthers(void* file, int /*times*/) {
  constexpr std::chrono::milliseconds kPause(1);
  if (std::chrono::steady_clock::now() + kPause > static_cast<SqliteFile*>(file)->deadline_) {
    return 0;
  }
  std::this_thread::sleep_for(kPause);
  return 1;
}

void SqliteFile::getOutOfTheWay() {
  close();
  // The rest of an unfinished change belongs to the old file.
  for (const char* part : {"", "-journal"}) {
    const std::string file = path_ + part;
    if (manner_.keepsCorruptFile) {
      std::rename(file.c_str(), (path_ + ".corrupt" + part).c_str());
    } else {
      std::remove(file.c_str());
    }
  }
}

}  // namespace zovk
