#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "service/ConfigDocument.h"
#include "service/console/ScriptBook.h"
#include "zovkpopup/Explain.h"
#include "zovkpopup/Problems.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk::service {

/// A request to show popups, and the player who makes it.
struct PlayerQuestion {
  std::string scene;
  std::uint64_t sceneType = 0;
  std::int32_t channel = 1;
  double moment = 0;
};

/// Judges documents like the command-line tool and the library. Both need the only engine of a
/// process, so one question is answered at a time. Any thread.
class Judge {
 public:
  explicit Judge(const ConfigDocument& config) : config_(config) {}

  /// Returns the problems of a document in the form of `config.json`, with these pages. Their
  /// scripts have the faults that `scripts` knows.
  std::vector<tool::Problem> problems(const std::string& document,
                                      const ConfigDocument::PageSource& pages);
  /// Returns why a player would see something, or nothing. Throws FolderError if games reject the
  /// document.
  ZOVKPopupExplanation explain(const std::string& document, const ConfigDocument::PageSource& pages,
                               const PlayerQuestion& question);
  ScriptBook& scripts() { return scripts_; }

 private:
  struct Finished;
  static constexpr std::size_t kMostRemembered = 1000;

  Finished finish(const std::string& document, const ConfigDocument::PageSource& pages) const;
  tool::Problems judged(const Finished& finished);

  const ConfigDocument& config_;
  ScriptBook scripts_;
  Mutex mutex_;
  /// Without those of scripts, by digests of all that they depend on.
  std::map<std::string, tool::Problems> remembered_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
