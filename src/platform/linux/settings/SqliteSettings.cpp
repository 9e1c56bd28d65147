#include "platform/linux/settings/SqliteSettings.h"

#include <utility>

#include <fmt/format.h>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

constexpr SqliteFile::Manner kManner = {
    // Everything is flushed with each change, the directory too: a setting survives a power cut.
    .prepare =
        "PRAGMA synchronous = EXTRA; CREATE TABLE IF NOT EXISTS settings("
        "key TEXT PRIMARY KEY NOT NULL, value TEXT NOT NULL) WITHOUT ROWID",
    .keepsCorruptFile = true};
constexpr std::chrono::seconds kBetweenTries(1);

// The log may be the host's own code, so it is not called with a lock held.
void writeLines(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) logError("%@", line);
}

}  // namespace

SqliteSettings::SqliteSettings(std::string path) : path_(std::move(path)), file_(path_, kManner) {}

std::optional<std::string> SqliteSettings::value(const std::string& key) const {
  Lines lines;
  std::optional<std::string> found;
  {
    const LockGuard lock(mutex_);
    writeQueued(patience(), lines);
    const bool read =
        !queued_.contains(key) &&
        run(
            "Read setting", "SELECT value FROM settings WHERE key = ?1", {key},
            [&](sqlite3_stmt* row) { found = columnText(row, 0); }, patience(), lines);
    if (read) {
      known_[key] = found;
    } else if (const auto waiting = queued_.find(key); waiting != queued_.end()) {
      found = waiting->second;
    } else if (const auto before = known_.find(key); locked_ && before != known_.end()) {
      found = before->second;
    }
  }
  writeLines(lines);
  return found;
}

void SqliteSettings::set(const std::string& key, const std::string& value) {
  change(key, value);
}

void SqliteSettings::remove(const std::string& key) {
  change(key, std::nullopt);
}

bool SqliteSettings::isReadable() const {
  const LockGuard lock(mutex_);
  return !locked_;
}

void SqliteSettings::keepQueued(std::chrono::milliseconds patience) {
  Lines lines;
  {
    const LockGuard lock(mutex_);
    writeQueued(patience, lines);
  }
  writeLines(lines);
}

void SqliteSettings::keepQueuedNowAndThen() {
  {
    const LockGuard lock(mutex_);
    const auto now = std::chrono::steady_clock::now();
    if (queued_.empty() || now < tryAgain_) return;
    tryAgain_ = now + kBetweenTries;
  }
  keepQueued(std::chrono::milliseconds(0));
}

void SqliteSettings::change(const std::string& key, std::optional<std::string> value) {
  Lines lines;
  {
    const LockGuard lock(mutex_);
    queued_[key] = std::move(value);
    tryAgain_ = std::chrono::steady_clock::now() + kBetweenTries;
    writeQueued(patience(), lines);
  }
  writeLines(lines);
}

// Changes that cannot wait any longer are written, or lost with a log line.
void SqliteSettings::writeQueued(std::chrono::milliseconds patience, Lines& lines) const {
  while (!queued_.empty()) {
    const auto& [key, value] = *queued_.begin();
    const bool written =
        value ? run("Save setting", "INSERT OR REPLACE INTO settings(key, value) VALUES(?1, ?2)",
                    {key, *value}, nullptr, patience, lines)
              : run("Remove setting", "DELETE FROM settings WHERE key = ?1", {key}, nullptr,
                    patience, lines);
    if (locked_) return;
    if (written) known_[key] = value;
    queued_.erase(queued_.begin());
  }
}

// A game must not stand still for as long as somebody else holds the file: it waits once.
std::chrono::milliseconds SqliteSettings::patience() const {
  return locked_ ? std::chrono::milliseconds(0) : kPatience;
}

bool SqliteSettings::run(const char* purpose, const char* sql,
                         const std::vector<std::string>& values, const SqliteFile::Row& row,
                         std::chrono::milliseconds patience, Lines& lines) const {
  const auto bind = [&values](sqlite3_stmt* statement) {
    int code = SQLITE_OK;
    int index = 0;
    for (const std::string& value : values) {
      if (code == SQLITE_OK) code = bindText(statement, ++index, value);
    }
    return code;
  };
  const SqliteFile::Outcome outcome = file_.run(sql, bind, row, patience);
  if (outcome.begunAfresh) {
    lines.push_back(fmt::format("Settings file:{} is corrupt, begun afresh", path_));
  }
  const bool wasLocked = std::exchange(locked_, outcome.isBusy());
  if (locked_ && !wasLocked) {
    lines.push_back(
        fmt::format("Settings file:{} is held by another program, tried again later", path_));
  } else if (!locked_ && outcome.code != SQLITE_OK) {
    LineLimit& failures = row ? readFailures_ : writeFailures_;
    auto line =
        failures.line(fmt::format("{} failed, error:{}", purpose, sqlite3_errstr(outcome.code)));
    if (line) lines.push_back(*std::move(line));
  }
  return outcome.code == SQLITE_OK;
}

}  // namespace zovk
