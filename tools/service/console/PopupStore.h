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

/// A popup as it stands in the workshop, published or not.
struct WorkedPopup {
  std::int64_t id = 0;
  std::int64_t version = 0;   ///< Counts its changes.
  boost::json::object entry;  ///< As in `config.json`.
  std::string page;           ///< Digest of its own page; empty when the folder's counts.
  bool paused = false;
};

/// What was put live at once.
struct Release {
  std::int64_t id = 0;
  std::int64_t time = 0;
  std::string who;
  std::string what;
  std::string document;              ///< The whole text of `config.json`.
  std::vector<std::int64_t> popups;  ///< Whose the document's entries are, one by one.
  std::vector<std::pair<std::string, std::string>> pages;  ///< Name and digest of each page file.
};

/// The console's tables in the service's file. What belongs together is written in one transaction,
/// which is on disk when it is done. One thread at a time. Failures throw std::runtime_error.
class PopupStore {
 public:
  static constexpr std::size_t kMostReleases = 100;
  static constexpr std::size_t kMostHistory = 5000;

  explicit PopupStore(const std::string& path);

  Database& database() { return database_; }

  std::vector<WorkedPopup> popups() const;
  std::optional<WorkedPopup> popup(std::int64_t id) const;
  std::int64_t add(const WorkedPopup& popup);
  /// Keeps a change, and counts it.
  void save(const WorkedPopup& popup);
  void remove(std::int64_t id);

  /// Keeps the bytes of a page; returns their digest.
  std::string addPage(const std::string& bytes);
  std::optional<std::string> page(const std::string& digest) const;

  /// Keeps a release that is not live yet. Old ones go, and the pages that only they had.
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

/// Everything that is written between its making and `commit` is on disk together, or not at all.
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
