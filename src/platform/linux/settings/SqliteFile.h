#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>

#include "platform/linux/settings/SqliteHandles.h"

namespace zovk {

/// One SQLite file, which several processes may share. The first statement opens it, with access
/// for its owner alone. A file that is not a database is moved away or removed, and a new one is
/// begun. A pipe, a directory or a link in its place is not opened. One thread at a time.
class SqliteFile {
 public:
  /// Binds a statement's values and returns SQLite's code.
  using Bind = std::function<int(sqlite3_stmt*)>;
  using Row = std::function<void(sqlite3_stmt*)>;

  struct Manner {
    const char* prepare;    ///< Run whenever the file is opened.
    bool keepsCorruptFile;  ///< As "….corrupt", so that people can examine it.
  };
  struct Outcome {
    int code = SQLITE_OK;
    bool begunAfresh = false;
    /// Returns whether another process held the file.
    bool isBusy() const { return primary() == SQLITE_BUSY || primary() == SQLITE_LOCKED; }

   private:
    int primary() const { return code & 0xff; }
  };

  SqliteFile(std::string path, const Manner& manner) : path_(std::move(path)), manner_(manner) {}

  /// Runs one statement. Waits for other processes no longer than `patience` in all. `row`, which
  /// may be empty, is called for each row of the result.
  Outcome run(const char* sql, const Bind& bind, const Row& row,
              std::chrono::milliseconds patience);
  const std::string& path() const { return path_; }

 private:
  int tryOnce(const char* sql, const Bind& bind, const Row& row);
  int open();
  int execute(const char* sql, const Bind& bind, const Row& row);
  int prepare(const char* sql, SqliteStatement& prepared);
  void close();
  void getOutOfTheWay();
  static int waitForOthers(void* file, int times);

  const std::string path_;
  const Manner manner_;
  std::chrono::steady_clock::time_point deadline_;   // of the statement that runs
  SqliteDatabase database_;                          // null until it could be opened
  std::map<std::string, SqliteStatement> prepared_;  // by their texts; of the open database
};

}  // namespace zovk
