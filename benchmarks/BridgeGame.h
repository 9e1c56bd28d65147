#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "fixtures/LocalBundle.h"
#include "zovkpopup/WebWindow.h"

namespace zovk {

/// A game with a web window. Page and game call each other as fast as they can. Every answer is
/// checked; a wrong one ends the program.
class BridgeGame {
 public:
  /// How the game waits until the popups have something to do.
  using Turn = std::function<void()>;

  BridgeGame();
  ~BridgeGame();
  BridgeGame(const BridgeGame&) = delete;
  BridgeGame& operator=(const BridgeGame&) = delete;

  /// Waits on the poll descriptor and pumps.
  static void turn();

  /// Makes the page call the game, `inFlight` calls at a time. Returns the milliseconds that it
  /// took.
  double callsFromPage(int calls, int inFlight, const Turn& turn = BridgeGame::turn);
  /// Makes the game call the page. Returns the milliseconds that it took.
  double callsFromGame(int calls, int inFlight, const Turn& turn = BridgeGame::turn);
  /// Closes the window and gives the processes time to clean up.
  void closeWindow();

 private:
  void callNext();

  ScratchDirectory home_;
  std::unique_ptr<ZOVKPopupWebWindow> window_;
  std::int64_t toSend_ = 0;
  std::int64_t toHear_ = 0;
};

}  // namespace zovk
