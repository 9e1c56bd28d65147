#pragma once

#include <functional>
#include <optional>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"
#include "helper/commands/Arguments.h"
#include "helper/window/SwayKeyboard.h"

namespace zovk::helper {

class GameWindow;

/// Places a popup's window: in a frame of its own, or over the game. Over the game it uses the
/// first way that the display allows: the game's own frame, then the whole screen. A full-screen
/// window hides what is below it on many displays, so it comes last.
class PopupPlace {
 public:
  /// An empty frame, or one as large as the area to cover, means over the game. `cameUp` is called
  /// where the display says that the window is on screen now, and gives it no keyboard by itself.
  PopupPlace(GtkWindow* window, const Frame& frame, GameWindow& game, std::function<void()> cameUp);

  /// Call it once the window is realised, before it is shown.
  void prepare();
  /// Call it after the window was shown: only then does the display give it a place. On X11 it
  /// takes the place a moment later, because the X server, which is asked for it, maps the window
  /// first.
  void settle();
  /// Reports that the game's window moved or changed its size.
  void follow();
  /// Reports that a monitor came, went or changed.
  void monitorsChanged();
  /// Reports that the popup takes the keyboard now. Some games then give up their place, or even
  /// their size.
  void remember() { remembered_ = asked_; }
  /// Reports that the game was minimised because of that: from now on the window stays alone where
  /// the game was.
  void detach();
  /// Reports that the game is back: the window is in front of it again.
  void attach();
  bool isDetached() const { return detached_; }
  /// Comes above the game if a window manager has put it below. Call it once the window is on
  /// screen.
  void comeUp();
  /// Takes the keyboard where nothing else gives it. Call it once the window is on screen.
  void takeKeyboard();
  bool isLastWay() const { return way_ != Way::kGameFrame; }
  bool coversGame() const { return coversGame_; }
  /// Returns whether it leaves a part of the game's window uncovered that is on its monitor: some
  /// window managers place new windows as they like, and then ignore all moves.
  bool isElsewhere() const;
  /// Returns whether nothing can be seen through the window, as far as is known.
  bool hidesGame() const;
  /// Returns the same before there is a window.
  static bool willHide(GameWindow& game);
  /// Takes the next way; the window must be shown again. Returns false if none is left.
  bool fallBack();

 private:
  enum class Way { kOwnFrame, kGameFrame, kFullScreen };
  Way firstWay() const;
  bool isFullScreen() const;
  /// Returns whether a window manager, or the display itself, gives places and the keyboard.
  bool isManaged() const;
  Frame wanted() const;
  static gboolean onSettled(gpointer self);
  void takePlace();
  void moveTo(const Frame& frame);
  void goFullScreen();

  GtkWindow* window_;
  GameWindow& game_;
  Frame frame_;
  SwayKeyboard sway_;
  bool coversGame_;
  bool detached_ = false;
  Way way_;
  std::optional<Frame> asked_;
  std::optional<Frame> remembered_;
  SourceGuard settling_;
};

}  // namespace zovk::helper
