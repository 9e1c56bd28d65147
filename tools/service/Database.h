#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zovk::service {

struct CloseDatabase {
  void operator()(sqlite3* database) const;
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const;
};

/// An SQLite file. One thread at a time. Failures throw std::runtime_error with SQLite's message.
class Database {
 public:
  explicit Database(const std::string& path);

  void run(const std::string& sql);
  std::int64_t lastRowId() const;
  sqlite3* handle() const { return handle_.get(); }

 private:
  std::unique_ptr<sqlite3, CloseDatabase> handle_;
};

/// One prepared statement; the database must outlive it.
class Statement {
 public:
  Statement(const Database& database, std::string_view sql);

  /// Sets the value of the next placeholder.
  Statement& bind(std::string_view text);
  Statement& bind(std::int64_t number);
  /// Returns whether there is another row.
  bool step();
  std::string text(int column) const;
  std::int64_t number(int column) const;

 private:
  const Database& database_;
  std::unique_ptr<sqlite3_stmt, FinalizeStatement> handle_;
  int bound_ = 0;
};

}  // namespace zovk::service
