#include "service/console/Answers.h"

#include <array>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "support/Utf8.h"

namespace zovk::service {
namespace {

// What a body says stands in the text of its member "data". Bodies come from players, so that each
// step asks first.
constexpr const char* kView =
    "CREATE TEMP VIEW answers AS"
    " SELECT id, received, name, game_id, install_id, os, version, pop_id, scene,"
    " CASE WHEN json_valid(data) THEN json_extract(data, '$.action') END AS action,"
    " COALESCE(CASE WHEN json_valid(data) THEN json_extract(data, '$.msg') END, '') AS msg"
    " FROM (SELECT *,"
    "  CASE WHEN json_valid(body) THEN json_extract(body, '$.pop_id') END AS pop_id,"
    "  CASE WHEN json_valid(body) THEN json_extract(body, '$.scene') END AS scene,"
    "  CASE WHEN json_valid(body) THEN CAST(json_extract(body, '$.data') AS TEXT) END AS data"
    "  FROM reports)";

constexpr std::string_view kWhere =
    " FROM answers WHERE (?1 = 0 OR pop_id = ?1) AND (?2 = 0 OR received >= ?2)"
    " AND (?3 = 0 OR received < ?3)"
    " AND (?4 = '' OR instr(lower(CAST(msg AS TEXT)), lower(?4)) > 0)";

constexpr std::array<std::string_view, 11> kColumns{"id",         "received", "name",    "game_id",
                                                    "install_id", "os",       "version", "pop_id",
                                                    "scene",      "action",   "msg"};
constexpr std::size_t kLongestShown = 2000;

void bindFilter(Statement& statement, const AnswerFilter& filter) {
  statement.bind(filter.popup).bind(filter.from).bind(filter.until).bind(filter.text);
}

std::string dateText(std::int64_t seconds) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(static_cast<std::time_t>(seconds)));
}

// Spreadsheets run what begins with these signs, and players choose what stands here.
std::string cell(std::string text) {
  if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos) {
    text.insert(text.begin(), '\'');
  }
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

Answers::Answers(const std::string& file) : database_(file) {
  database_.run(kView);
}

boost::json::array Answers::groups(const std::string& columns, const std::string& order,
                                   const AnswerFilter& filter) const {
  Statement rows(database_, "SELECT " + columns + ", COUNT(*) AS count" + std::string(kWhere) +
                                " GROUP BY 1, 2 ORDER BY " + order + " LIMIT " +
                                std::to_string(kMostTotals));
  bindFilter(rows, filter);
  boost::json::array result;
  while (rows.step()) {
    std::string key = repairedUtf8(rows.text(0));
    if (key.size() > kLongestShown) key = repairedUtf8(key.substr(0, kLongestShown)) + "…";
    result.push_back(boost::json::object{
        {"key", key}, {"scene", repairedUtf8(rows.text(1))}, {"count", rows.number(2)}});
  }
  return result;
}

boost::json::object Answers::totals(const AnswerFilter& filter) const {
  const LockGuard lock(mutex_);
  Statement all(database_, "SELECT COUNT(*)" + std::string(kWhere));
  bindFilter(all, filter);
  all.step();
  const std::string day =
      filter.utc ? "date(received, 'unixepoch')" : "date(received, 'unixepoch', 'localtime')";
  return {{"count", all.number(0)},
          {"by_popup", groups("pop_id, scene", "count DESC", filter)},
          {"by_day", groups(day + ", ''", "1 DESC", filter)},
          {"by_text", groups("msg, ''", "count DESC", filter)}};
}

boost::json::array Answers::list(const AnswerFilter& filter, std::size_t most) const {
  const LockGuard lock(mutex_);
  std::string columns;
  for (const auto column : kColumns) columns += (columns.empty() ? "" : ", ") + std::string(column);
  Statement rows(database_, "SELECT " + columns + std::string(kWhere) + " ORDER BY id DESC LIMIT " +
                                std::to_string(most));
  bindFilter(rows, filter);
  boost::json::array result;
  std::size_t bytes = 0;
  while (bytes <= kMostBytesExported && rows.step()) {
    boost::json::object answer;
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      std::string text = repairedUtf8(rows.text(static_cast<int>(i)));
      bytes += text.size();
      answer[kColumns[i]] = std::move(text);
    }
    answer["id"] = rows.number(0);
    answer["received"] = dateText(rows.number(1));
    result.push_back(std::move(answer));
  }
  return result;
}

std::string Answers::csv(const AnswerFilter& filter) const {
  std::string text;
  for (const auto column : kColumns) text += (text.empty() ? "" : ",") + std::string(column);
  text += "\r\n";
  for (const auto& answer : list(filter, kMostExported)) {
    std::string line;
    for (const auto column : kColumns) {
      const auto& value = answer.at(column);
      if (!line.empty()) line += ',';
      line += value.is_int64() ? std::to_string(value.get_int64())
                               : cell(std::string(value.get_string()));
    }
    text += line + "\r\n";
  }
  return text;
}

}  // namespace zovk::service
