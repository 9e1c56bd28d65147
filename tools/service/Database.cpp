#include "service/Database.h"

#include <stdexcept>

#include <sqlite3.h>

namespace zovk::service {
namespace {

constexpr int kBusyMilliseconds = 5000;

void require(bool done, sqlite3* database) {
  if (!done) throw std::runtime_error(std::string("reports: ") + sqlite3_errmsg(database));
}

sqlite3* open(const std::string& path) {
  sqlite3* handle = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
  if (code == SQLITE_OK) return handle;
  sqlite3_close(handle);
  throw std::runtime_error(path + ": " + sqlite3_errstr(code));
}

}  // namespace

void CloseDatabase::operator()(sqlite3* database) const {
  sqlite3_close(database);
}

void FinalizeStatement::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

Database::Database(const std::string& path) : handle_(open(path)) {
  sqlite3_busy_timeout(handle(), kBusyMilliseconds);
}

void Database::run(const std::string& sql) {
  require(sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, handle());
}

std::int64_t Database::lastRowId() const {
  return sqlite3_last_insert_rowid(handle());
}

Statement::Statement(const Database& database, std::string_view sql) : database_(database) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v2(database.handle(), sql.data(), static_cast<int>(sql.size()),
                                      &statement, nullptr);
  handle_.reset(statement);
  require(code == SQLITE_OK, database.handle());
}

Statement& Statement::bind(std::string_view text) {
  const int code = sqlite3_bind_text64(handle_.get(), ++bound_, text.data(), text.size(),
                                       SQLITE_TRANSIENT, SQLITE_UTF8);
  require(code == SQLITE_OK, database_.handle());
  return *this;
}

Statement& Statement::bind(std::int64_t number) {
  require(sqlite3_bind_int64(handle_.get(), ++bound_, number) == SQLITE_OK, database_.handle());
  return *this;
}

bool Statement::step() {
  const int code = sqlite3_step(handle_.get());
  require(code == SQLITE_ROW || code == SQLITE_DONE, database_.handle());
  return code == SQLITE_ROW;
}

std::string Statement::text(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(handle_.get(), column));
  const int length = sqlite3_column_bytes(handle_.get(), column);
  return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(length));
}

std::int64_t Statement::number(int column) const {
  return sqlite3_column_int64(handle_.get(), column);
}

}  // namespace zovk::service
