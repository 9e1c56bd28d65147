#include "platform/linux/http/DownloadCache.h"

#include <utility>

#include <openssl/sha.h>

namespace zovk {
namespace {

constexpr SqliteFile::Manner kManner = {
    // Not flushed: after a power cut, digests show which files are damaged, and those are
    // downloaded again.
    .prepare =
        "PRAGMA journal_mode = PERSIST; PRAGMA synchronous = OFF;"
        "CREATE TABLE IF NOT EXISTS downloads("
        "url TEXT PRIMARY KEY NOT NULL, entity_tag TEXT NOT NULL, last_modified TEXT NOT NULL,"
        "used INTEGER NOT NULL, digest BLOB NOT NULL, size INTEGER NOT NULL, body BLOB NOT NULL)",
    .keepsCorruptFile = false};
constexpr std::chrono::milliseconds kPatience(200);
// The mark of a body that was used within a day stays as it is: a change takes longer than a look.
constexpr const char* kBody =
    "SELECT body, digest, used < unixepoch() - 86400 FROM downloads"
    " WHERE url = ?1 AND entity_tag = ?2 AND last_modified = ?3";
constexpr const char* kMarkUsed = "UPDATE downloads SET used = unixepoch() WHERE url = ?1";
constexpr const char* kRemoveOldest =
    "DELETE FROM downloads WHERE url IN (SELECT url FROM (SELECT url, sum(size) OVER"
    " (ORDER BY used DESC, rowid DESC) AS total FROM downloads) WHERE total > ?1)";

unsigned char* asBytes(std::string& text) {
  return reinterpret_cast<unsigned char*>(text.data());
}

// Tells damage, not deceit: SHA-1 takes less than half of MD5's time.
std::string digestOf(const std::string& url, const Validators& validators,
                     const std::string& body) {
  std::string all = url + validators.entityTag + validators.lastModified + body;
  std::string digest(SHA_DIGEST_LENGTH, '\0');
  SHA1(asBytes(all), all.size(), asBytes(digest));
  return digest;
}

int bindEntry(sqlite3_stmt* statement, const std::string& url, const Validators& validators) {
  bindText(statement, 1, url);
  bindText(statement, 2, validators.entityTag);
  return bindText(statement, 3, validators.lastModified);
}

}  // namespace

DownloadCache::DownloadCache(std::string path) : file_(std::move(path), kManner) {}

std::optional<Validators> DownloadCache::validators(const std::string& url) {
  std::optional<Validators> found;
  run(
      "SELECT entity_tag, last_modified FROM downloads WHERE url = ?1",
      [&](sqlite3_stmt* statement) { return bindText(statement, 1, url); },
      [&](sqlite3_stmt* row) {
        found = Validators{columnText(row, 0), columnText(row, 1)};
      });
  return found;
}

std::optional<std::string> DownloadCache::body(const std::string& url,
                                               const Validators& validators) {
  std::optional<std::string> found;
  bool markIsOld = false;
  run(
      kBody, [&](sqlite3_stmt* statement) { return bindEntry(statement, url, validators); },
      [&](sqlite3_stmt* row) {
        found = columnText(row, 0);
        if (columnText(row, 1) != digestOf(url, validators, *found)) found.reset();
        markIsOld = sqlite3_column_int(row, 2) != 0;
      });
  if (found && markIsOld) {
    run(
        kMarkUsed, [&](sqlite3_stmt* statement) { return bindText(statement, 1, url); }, nullptr);
  }
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
        sqlite3_bind_blob64(statement, 4, digest.data(), digest.size(), SQLITE_STATIC);
        sqlite3_bind_int64(statement, 5, static_cast<sqlite3_int64>(body.size()));
        return sqlite3_bind_blob64(statement, 6, body.data(), body.size(), SQLITE_STATIC);
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
      kRemoveOldest,
      [](sqlite3_stmt* statement) { return sqlite3_bind_int64(statement, 1, kMostBytes); },
      nullptr);
}

void DownloadCache::run(const char* sql, const SqliteFile::Bind& bind, const SqliteFile::Row& row) {
  if (!file_.path().empty()) file_.run(sql, bind, row, kPatience);
}

}  // namespace zovk
