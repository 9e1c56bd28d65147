#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include <sqlite3.h>

namespace zovk {

struct SqliteDeleter {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using SqliteDatabase = std::unique_ptr<sqlite3, SqliteDeleter>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, SqliteDeleter>;

inline std::string columnText(sqlite3_stmt* statement, int column) {
  const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
  const int length = sqlite3_column_bytes(statement, column);
  return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(length));
}

/// The text must live until the statement has run.
inline int bindText(sqlite3_stmt* statement, int index, const std::string& text) {
  return sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_STATIC,
                             SQLITE_UTF8);
}

}  // namespace zovk
