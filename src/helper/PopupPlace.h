#pragma once

#include <optional>

#include <gtk/gtk.h>

#include "helper/Arguments.h"

namespace zovk::helper {

class GameWindow;

/// Where a popup's window stands: in a frame of its own, or over the game. Over the game it takes
/// the first of several ways that the display lets work: the game's own frame, then the whole
/// screen. A full-screen window hides what is below it on many displays, so it comes last.
class PopupPlace {
 public:
  /// An empty frame, or one that is as large as what there is to cover, means over the game.
  PopupPlace(GtkWindow* window, const Frame& frame, GameWindow& game);

  /// Before the window is shown, once it is realised.
  void prepare();
  /// After it was shown: its place is the display's to give only then.
  void settle();
  /// The game's window moved or changed its size.
  void follow();
  /// The popup takes the keyboard now. A game that minds gives up its place, or even its size.
  void remember() { remembered_ = asked_; }
  /// The game was minimised for that: stands for itself from now on, where the game stood.
  void detach();
  /// The game is back: stands before it again.
  void attach();
  bool isDetached() const { return detached_; }
  /// Where nobody else hands it out. Once the window is on screen.
  void takeKeyboard();
  bool isLastWay() const { return way_ != Way::kGameFrame; }
  bool coversGame() const { return coversGame_; }
  /// Whether nothing can be seen through the window, as far as is known.
  bool hidesGame() const;
  /// The same, before there is any window.
  static bool willHide(GameWindow& game);
  /// Takes the next way, to be shown anew; false when none is left.
  bool fallBack();

 private:
  enum class Way { kOwnFrame, kGameFrame, kFullScreen };
  Way firstWay() const;
  bool isFullScreen() const;
  /// Whether a window manager, or the display itself, hands out places and the keyboard.
  bool isManaged() const;
  Frame wanted() const;
  void moveTo(const Frame& frame);
  void goFullScreen();

  GtkWindow* window_;
  GameWindow& game_;
  Frame frame_;
  bool coversGame_;
  bool detached_ = false;
  Way way_;
  std::optional<Frame> asked_;
  std::optional<Frame> remembered_;
};

}  // namespace zovk::helper
