#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "zovkpopup/ScriptBatch.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// Remembers which pages have scripts that cannot be parsed. The helper program parses them. Where
/// it is not installed or fails, the pages have no faults, and `unchecked` gives the reason. Any
/// thread.
class ScriptBook {
 public:
  /// Returns whether `learn` had this page before. With `again` a page that could not be checked
  /// then counts as a new one.
  bool knows(const std::string& page, bool again) const;
  /// Has the scripts of these pages parsed. Takes ten seconds at most.
  void learn(const std::vector<std::string>& pages);
  /// Returns the faults of a page, as far as they are known.
  std::vector<tool::ScriptFault> faultsOf(const std::string& page) const;
  /// Returns why the scripts of some pages were not checked; empty if all were.
  std::string unchecked() const;

 private:
  struct Known {
    std::vector<tool::ScriptFault> faults;
    std::string unchecked;  ///< The reason; empty if the scripts were parsed.
  };
  static constexpr std::size_t kMostRemembered = 2000;

  mutable Mutex mutex_;
  std::map<std::string, Known> known_ ZOVK_GUARDED_BY(mutex_);  ///< By the digests of pages.
  std::string missing_ ZOVK_GUARDED_BY(mutex_);  ///< Why there is no helper; empty if there is one.
};

/// Collects the pages whose scripts a book does not know yet, and has it learn them in rounds of 16
/// MiB. When the rounds are used up, further pages wait for the next reader. One thread.
class ScriptReader {
 public:
  /// `again` is that of `ScriptBook::knows`.
  ScriptReader(ScriptBook& book, int rounds, bool again)
      : book_(book), rounds_(rounds), again_(again) {}

  void add(const std::string& page);
  /// Has the book learn the pages that are left.
  void finish();

 private:
  ScriptBook& book_;
  int rounds_;
  bool again_;
  std::vector<std::string> pages_;
  std::size_t bytes_ = 0;
};

}  // namespace zovk::service
