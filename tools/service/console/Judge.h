#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "service/ConfigDocument.h"
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

/// Says of documents what the command-line tool and the library say of them. Both need the one
/// engine that a process can have, so that one question is answered at a time. Any thread.
class Judge {
 public:
  explicit Judge(const ConfigDocument& config) : config_(config) {}

  /// What is wrong with a document as it stands in `config.json`, with these pages.
  std::vector<tool::Problem> problems(const std::string& document,
                                      const ConfigDocument::PageSource& pages);
  /// Why a player would see something, or nothing. Throws FolderError when games reject the
  /// document.
  ZOVKPopupExplanation explain(const std::string& document, const ConfigDocument::PageSource& pages,
                               const PlayerQuestion& question);

 private:
  static constexpr std::size_t kMostRemembered = 1000;

  const ConfigDocument& config_;
  Mutex mutex_;
  /// By digests of all that they depend on.
  std::map<std::string, std::vector<tool::Problem>> remembered_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk::service
