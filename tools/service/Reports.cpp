#include "service/Reports.h"

#include <ctime>

#include "text/JsonRead.h"

namespace zovk::service {
namespace {

constexpr const char* kSchema =
    "PRAGMA journal_mode = WAL;"
    "CREATE TABLE IF NOT EXISTS reports (id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " received INTEGER NOT NULL, name TEXT NOT NULL, game_id TEXT NOT NULL,"
    " install_id TEXT NOT NULL, os TEXT NOT NULL, version TEXT NOT NULL, body TEXT NOT NULL);";

constexpr std::string_view kInsert =
    "INSERT INTO reports (received, name, game_id, install_id, os, version, body)"
    " VALUES (?, ?, ?, ?, ?, ?, ?)";

constexpr std::string_view kColumns =
    "SELECT id, received, name, game_id, install_id, os, version, body FROM reports";

boost::json::value parsed(std::string_view text) {
  boost::json::error_code error;
  boost::json::value value = readJson(text, error);
  return error ? boost::json::value() : value;
}

// Returns what the player did, which stands in the body as a JSON text of its own.
boost::json::value resultOf(const boost::json::value& body) {
  const auto* members = body.if_object();
  const auto* data = members ? members->if_contains("data") : nullptr;
  return data != nullptr && data->is_string() ? parsed(data->get_string()) : boost::json::value();
}

boost::json::object reportOf(const Statement& row) {
  const boost::json::value body = parsed(row.text(7));
  return {{"id", row.number(0)},    {"received", row.number(1)}, {"name", row.text(2)},
          {"game_id", row.text(3)}, {"install_id", row.text(4)}, {"os", row.text(5)},
          {"version", row.text(6)}, {"result", resultOf(body)},  {"body", body}};
}

}  // namespace

Reports::Reports(const std::string& path) : database_(path) {
  database_.run(kSchema);
}

boost::json::object Reports::add(const Caller& caller, const std::string& name,
                                 const std::string& body) {
  const LockGuard lock(mutex_);
  Statement insert(database_, kInsert);
  insert.bind(std::time(nullptr)).bind(name).bind(caller.gameId).bind(caller.installId);
  insert.bind(caller.os).bind(caller.version).bind(body).step();
  Statement added(database_, std::string(kColumns) + " WHERE id = ?");
  added.bind(database_.lastRowId()).step();
  return reportOf(added);
}

boost::json::array Reports::list(std::int64_t after) const {
  const LockGuard lock(mutex_);
  const std::string latest = std::string(kColumns) + " WHERE id > ? ORDER BY id DESC LIMIT 1000";
  Statement rows(database_, "SELECT * FROM (" + latest + ") ORDER BY id");
  rows.bind(after);
  boost::json::array reports;
  while (rows.step()) reports.push_back(reportOf(rows));
  return reports;
}

}  // namespace zovk::service
