#pragma once

#include <memory>

#include <sqlite3.h>

namespace zovk {

struct SqliteDeleter {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using SqliteDatabase = std::unique_ptr<sqlite3, SqliteDeleter>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, SqliteDeleter>;

}  // namespace zovk
