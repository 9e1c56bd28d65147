#include "platform/linux/DownloadCache.h"

#include <cstdio>

#include "support/Md5.h"

namespace zovk {
namespace {

constexpr int kBusyMilliseconds = 200;
constexpr const char* kPrepare =
    // Not flushed: after a power cut, digests tell what is damaged, and that is fetched again.
    "PRAGMA journal_mode = PERSIST; PRAGMA synchronous = OFF;"
    "CREATE TABLE IF NOT EXISTS downloads("
    "url TEXT PRIMARY KEY NOT NULL, entity_tag TEXT NOT NULL, last_modified TEXT NOT NULL,"
    "used INTEGER NOT NULL, digest TEXT NOT NULL, size INTEGER NOT NULL, body BLOB NOT NULL)";
// Bodies of pages that are looked at daily are not marked as used more often than that.
constexpr const char* kMarkUsed =
    "UPDATE downloads SET used = unixepoch() WHERE url = ?1 AND used < unixepoch() - 86400";
constexpr const char* kRemoveOldest =
    "DELETE FROM downloads WHERE url IN (SELECT url FROM (SELECT url, sum(size) OVER"
    " (ORDER BY used DESC, rowid DESC) AS total FROM downloads) WHERE total > ?1)";

std::string digestOf(const std::string& url, const Validators& validators,
                     const std::string& body) {
  Md5 digest;
  for (const std::string* text : {&url, &validators.entityTag, &validators.lastModified, &body}) {
    digest.update(*text);
  }
  return digest.finish();
}

void bindEntry(sqlite3_stmt* statement, const std::string& url, const Validators& validators) {
  bindText(statement, 1, url);
  bindText(statement, 2, validators.entityTag);
  bindText(statement, 3, validators.lastModified);
}

}  // namespace

std::optional<Validators> DownloadCache::validators(const std::string& url) {
  std::optional<Validators> found;
  run(
      "SELECT entity_tag, last_modified FROM downloads WHERE url = ?1",
      [&](sqlite3_stmt* statement) { bindText(statement, 1, url); },
      [&](sqlite3_stmt* row) {
        found = Validators{columnText(row, 0), columnText(row, 1)};
      });
  return found;
}

std::optional<std::string> DownloadCache::body(const std::string& url,
                                               const Validators& validators) {
  std::optional<std::string> found;
  run(
      "SELECT body, digest FROM downloads WHERE url = ?1 AND entity_tag = ?2 AND last_modified = "
      "?3",
      [&](sqlite3_stmt* statement) { bindEntry(statement, url, validators); },
      [&](sqlite3_stmt* row) {
        found = columnText(row, 0);
        if (columnText(row, 1) != digestOf(url, validators, *found)) found.reset();
      });
  if (found)
    run(
        kMarkUsed, [&](sqlite3_stmt* s) { bindText(s, 1, url); }, nullptr);
  return found;
}

void DownloadCache::keep(const std::string& url, const Validators& validators,
                         const std::string& body) {
  if (body.size() > kLargestBody) return;
  const std::string digest = digestOf(url, validators, body);
  run(
      "INSERT OR REPLACE INTO downloads VALUES(?1, ?2, ?3, unixepoch(), ?4, ?5, ?6)",
      [&](sqlite3_stmt* statement) {
        bindEntry(statement, url, validators);
        bindText(statement, 4, digest);
        sqlite3_bind_int64(statement, 5, static_cast<sqlite3_int64>(body.size()));
        sqlite3_bind_blob64(statement, 6, body.data(), body.size(), SQLITE_STATIC);
      },
      nullptr);
  removeOldest(body.size());
}

// A look at all entries costs as much as keeping one, so it waits until much is new.
void DownloadCache::removeOldest(std::size_t added) {
  addedSinceRemoving_ += added;
  if (addedSinceRemoving_ < kLargestBody) return;
  addedSinceRemoving_ = 0;
  run(
      kRemoveOldest, [](sqlite3_stmt* statement) { sqlite3_bind_int64(statement, 1, kMostBytes); },
      nullptr);
}

void DownloadCache::run(const char* sql, const Bind& bind, const Row& row) {
  if (path_.empty()) return;
  const int code = tryOnce(sql, bind, row);
  if (code != SQLITE_CORRUPT && code != SQLITE_NOTADB) return;
  beginAfresh();
  tryOnce(sql, bind, row);
}

int DownloadCache::tryOnce(const char* sql, const Bind& bind, const Row& row) {
  if (const int code = open(); code != SQLITE_OK) return code;
  sqlite3_stmt* prepared = nullptr;
  int code = sqlite3_prepare_v2(database_.get(), sql, -1, &prepared, nullptr);
  const SqliteStatement statement(prepared);
  if (code != SQLITE_OK) return code;
  bind(prepared);
  while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
    if (row) row(prepared);
  }
  return code;
}

int DownloadCache::open() {
  if (database_) return SQLITE_OK;
  makePrivateFile(path_);
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  database_.reset(opened);
  if (opened == nullptr) return SQLITE_NOMEM;
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
  if (code == SQLITE_OK) code = sqlite3_exec(opened, kPrepare, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) database_.reset();
  return code;
}

void DownloadCache::beginAfresh() {
  database_.reset();
  for (const char* part : {"", "-journal"}) std::remove((path_ + part).c_str());
}

}  // namespace zovk
