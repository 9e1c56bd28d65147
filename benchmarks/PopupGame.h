#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "GameLoop.h"
#include "fixtures/LocalBundle.h"

namespace zovk {

/// A game whose bundle has one page, of the scene "page". Each popup shows it as often as asked.
class PopupGame {
 public:
  explicit PopupGame(const std::string& page);
  PopupGame(const PopupGame&) = delete;
  PopupGame& operator=(const PopupGame&) = delete;

  /// Sets the popups up, and runs until the helper is warm. Returns false if that failed.
  bool start();

  GameLoop loop;
  /// When a page had loaded and the game heard of it. Whoever waits for it clears it.
  std::optional<std::chrono::steady_clock::time_point> loaded;
  std::string pagePath;

 private:
  LocalBundle bundle_;
  ScratchDirectory home_;
};

}  // namespace zovk
