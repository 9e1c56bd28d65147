#include "service/console/PopupStore.h"

#include <ctime>

#include <boost/json/serialize.hpp>

#include "service/Folder.h"
#include "text/JsonRead.h"
#include "text/Md5.h"

namespace zovk::service {
namespace {

constexpr const char* kSchema =
    "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
    "CREATE TABLE IF NOT EXISTS popups (id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " version INTEGER NOT NULL, entry TEXT NOT NULL, page TEXT NOT NULL, paused INTEGER NOT NULL);"
    "CREATE TABLE IF NOT EXISTS page_files (digest TEXT PRIMARY KEY, bytes TEXT NOT NULL);"
    "CREATE TABLE IF NOT EXISTS releases (id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " time INTEGER NOT NULL, who TEXT NOT NULL, what TEXT NOT NULL, document TEXT NOT NULL,"
    " live INTEGER NOT NULL);"
    "CREATE TABLE IF NOT EXISTS release_popups (release INTEGER NOT NULL, place INTEGER NOT NULL,"
    " popup INTEGER NOT NULL, PRIMARY KEY (release, place));"
    "CREATE TABLE IF NOT EXISTS release_pages (release INTEGER NOT NULL, name TEXT NOT NULL,"
    " digest TEXT NOT NULL, PRIMARY KEY (release, name));"
    "CREATE TABLE IF NOT EXISTS history (id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " time INTEGER NOT NULL, who TEXT NOT NULL, what TEXT NOT NULL, popup INTEGER NOT NULL,"
    " details TEXT NOT NULL);";

constexpr std::string_view kPopupColumns = "SELECT id, version, entry, page, paused FROM popups";
constexpr std::string_view kReleaseColumns = "SELECT id, time, who, what, document FROM releases";

WorkedPopup popupOf(const Statement& row) {
  return {row.number(0), row.number(1), objectOf(row.text(2), "a popup of the console"),
          row.text(3), row.number(4) != 0};
}

}  // namespace

Transaction::Transaction(Database& database) : database_(database) {
  // The right to write is had from the start, so that nothing that was read is out of date by then.
  database_.run("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  if (!open_) return;
  try {
    database_.run("ROLLBACK");
  } catch (const std::exception&) {
    // SQLite has taken it back by itself.
  }
}

void Transaction::commit() {
  database_.run("COMMIT");
  open_ = false;
}

PopupStore::PopupStore(const std::string& path) : database_(path) {
  database_.run(kSchema);
}

std::vector<WorkedPopup> PopupStore::popups() const {
  Statement rows(database_, std::string(kPopupColumns) + " ORDER BY id");
  std::vector<WorkedPopup> result;
  while (rows.step()) result.push_back(popupOf(rows));
  return result;
}

std::optional<WorkedPopup> PopupStore::popup(std::int64_t id) const {
  Statement row(database_, std::string(kPopupColumns) + " WHERE id = ?");
  row.bind(id);
  if (!row.step()) return std::nullopt;
  return popupOf(row);
}

std::int64_t PopupStore::add(const WorkedPopup& popup) {
  Statement insert(database_,
                   "INSERT INTO popups (version, entry, page, paused) VALUES (1, ?, ?, ?)");
  insert.bind(boost::json::serialize(popup.entry)).bind(popup.page);
  insert.bind(std::int64_t{popup.paused}).step();
  return database_.lastRowId();
}

void PopupStore::save(const WorkedPopup& popup) {
  Statement update(database_,
                   "UPDATE popups SET version = version + 1, entry = ?, page = ?, paused = ?"
                   " WHERE id = ?");
  update.bind(boost::json::serialize(popup.entry)).bind(popup.page);
  update.bind(std::int64_t{popup.paused}).bind(popup.id).step();
}

void PopupStore::remove(std::int64_t id) {
  Statement(database_, "DELETE FROM popups WHERE id = ?").bind(id).step();
}

std::string PopupStore::addPage(const std::string& bytes) {
  std::string digest = md5Hex(bytes);
  Statement insert(database_, "INSERT OR IGNORE INTO page_files (digest, bytes) VALUES (?, ?)");
  insert.bind(digest).bind(bytes).step();
  return digest;
}

std::optional<std::string> PopupStore::page(const std::string& digest) const {
  Statement row(database_, "SELECT bytes FROM page_files WHERE digest = ?");
  row.bind(digest);
  if (!row.step()) return std::nullopt;
  return row.text(0);
}

std::int64_t PopupStore::add(const Release& release) {
  Statement insert(database_,
                   "INSERT INTO releases (time, who, what, document, live) VALUES (?, ?, ?, ?, 0)");
  insert.bind(release.time).bind(release.who).bind(release.what).bind(release.document).step();
  const std::int64_t id = database_.lastRowId();
  for (std::size_t place = 0; place < release.popups.size(); ++place) {
    Statement popup(database_,
                    "INSERT INTO release_popups (release, place, popup) VALUES (?, ?, ?)");
    popup.bind(id).bind(static_cast<std::int64_t>(place)).bind(release.popups[place]).step();
  }
  for (const auto& [name, digest] : release.pages) {
    Statement page(database_, "INSERT INTO release_pages (release, name, digest) VALUES (?, ?, ?)");
    page.bind(id).bind(name).bind(digest).step();
  }
  forgetOld();
  return id;
}

void PopupStore::forgetOld() {
  const std::string oldest =
      " <= (SELECT MAX(id) FROM releases) - " + std::to_string(kMostReleases);
  database_.run("DELETE FROM releases WHERE id" + oldest +
                "; DELETE FROM release_popups WHERE release" + oldest +
                "; DELETE FROM release_pages WHERE release" + oldest +
                "; DELETE FROM page_files WHERE digest NOT IN (SELECT digest FROM release_pages)"
                " AND digest NOT IN (SELECT page FROM popups)");
}

void PopupStore::markLive(std::int64_t release) {
  Statement(database_, "UPDATE releases SET live = 1 WHERE id = ?").bind(release).step();
}

Release PopupStore::releaseOf(const Statement& row) const {
  Release release{row.number(0), row.number(1), row.text(2), row.text(3), row.text(4), {}, {}};
  Statement popups(database_, "SELECT popup FROM release_popups WHERE release = ? ORDER BY place");
  popups.bind(release.id);
  while (popups.step()) release.popups.push_back(popups.number(0));
  Statement pages(database_, "SELECT name, digest FROM release_pages WHERE release = ?");
  pages.bind(release.id);
  while (pages.step()) release.pages.emplace_back(pages.text(0), pages.text(1));
  return release;
}

std::optional<Release> PopupStore::release(std::int64_t id) const {
  Statement row(database_, std::string(kReleaseColumns) + " WHERE id = ?");
  row.bind(id);
  if (!row.step()) return std::nullopt;
  return releaseOf(row);
}

std::optional<Release> PopupStore::latestRelease() const {
  Statement row(database_, std::string(kReleaseColumns) + " ORDER BY id DESC LIMIT 1");
  if (!row.step()) return std::nullopt;
  return releaseOf(row);
}

bool PopupStore::isLive(std::int64_t release) const {
  Statement row(database_, "SELECT live FROM releases WHERE id = ?");
  row.bind(release);
  return row.step() && row.number(0) != 0;
}

boost::json::array PopupStore::releases() const {
  Statement rows(database_,
                 "SELECT id, time, who, what, (SELECT COUNT(*) FROM release_popups"
                 " WHERE release = releases.id AND popup != 0) FROM releases ORDER BY id DESC");
  boost::json::array result;
  while (rows.step()) {
    result.push_back(boost::json::object{{"id", rows.number(0)},
                                         {"time", rows.number(1)},
                                         {"who", rows.text(2)},
                                         {"what", rows.text(3)},
                                         {"popups", rows.number(4)}});
  }
  return result;
}

void PopupStore::addHistory(const std::string& who, const std::string& what, std::int64_t popup,
                            const std::string& details) {
  Statement insert(database_,
                   "INSERT INTO history (time, who, what, popup, details) VALUES (?, ?, ?, ?, ?)");
  insert.bind(std::time(nullptr)).bind(who).bind(what).bind(popup).bind(details).step();
  database_.run("DELETE FROM history WHERE id <= (SELECT MAX(id) FROM history) - " +
                std::to_string(kMostHistory));
}

boost::json::array PopupStore::history(std::size_t most) const {
  Statement rows(
      database_,
      "SELECT id, time, who, what, popup, details FROM history ORDER BY id DESC LIMIT ?");
  rows.bind(static_cast<std::int64_t>(most));
  boost::json::array result;
  while (rows.step()) {
    result.push_back(boost::json::object{{"id", rows.number(0)},
                                         {"time", rows.number(1)},
                                         {"who", rows.text(2)},
                                         {"what", rows.text(3)},
                                         {"popup", rows.number(4)},
                                         {"details", rows.text(5)}});
  }
  return result;
}

}  // namespace zovk::service
