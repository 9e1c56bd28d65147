#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "service/Database.h"

namespace zovk::service {

/// A popup in the workshop, published or not.
struct WorkedPopup {
  std::int64_t id = 0;
  std::int64_t version = 0;   ///< Counts its changes.
  boost::json::object entry;  ///< As in `config.json`.
  std::string page;           ///< Digest of its own page; empty when the folder's counts.
  bool paused = false;
};

/// The things that were put live together.
struct Release {
  std::int64_t id = 0;
  std::int64_t time = 0;
  std::string who;
  std::string what;
  std::string document;              ///< The whole text of `config.json`.
  std::vector<std::int64_t> popups;  ///< The owner of each of the document's entries.
  std::vector<std::pair<std::string, std::string>> pages;  ///< Name and digest of each page file.
};

/// The console's tables in the service's file. Changes that belong together are written in one
/// transaction, which is on disk when it ends. One thread at a time. Failures throw
/// std::runtime_error.
class PopupStore {
 public:
  static constexpr std::size_t kMostReleases = 100;
  static constexpr std::size_t kMostHistory = 5000;

  explicit PopupStore(const std::string& path);

  Database& database() { return database_; }

  std::vector<WorkedPopup> popups() const;
  std::optional<WorkedPopup> popup(std::int64_t id) const;
  std::int64_t add(const WorkedPopup& popup);
  /// Stores a change, and counts it.
  void save(const WorkedPopup& popup);
  void remove(std::int64_t id);

  /// Stores the bytes of a page; returns their digest.
  std::string addPage(const std::string& bytes);
  std::optional<std::string> page(const std::string& digest) const;

  /// Stores a release that is not live yet. Removes old ones, with the pages that only they had.
  std::int64_t add(const Release& release);
  void markLive(std::int64_t release);
  std::optional<Release> release(std::int64_t id) const;
  std::optional<Release> latestRelease() const;
  bool isLive(std::int64_t release) const;
  /// Latest first, without documents.
  boost::json::array releases() const;

  void addHistory(const std::string& who, const std::string& what, std::int64_t popup,
                  const std::string& details);
  /// Latest first.
  boost::json::array history(std::size_t most) const;

 private:
  Release releaseOf(const Statement& row) const;
  void forgetOld();

  Database database_;
};

/// Everything written between its construction and `commit` is on disk together, or not at all.
class Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace zovk::service
