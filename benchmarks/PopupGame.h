#pragma once

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
  bool loaded = false;  ///< Becomes true when a page has loaded. Whoever waits for it clears it.
  std::string pagePath;

 private:
  LocalBundle bundle_;
  ScratchDirectory home_;
};

}  // namespace zovk
