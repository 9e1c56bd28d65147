#pragma once

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The game's last frame, for windows that hide the game. The game is asked for it once for each
/// time in which there are windows, and again when a window's size has changed and stayed for a
/// moment.
class Backdrop {
 public:
  explicit Backdrop(EventSink events);

  /// Asks the game. The game answers now if something is shown, or else before something is shown.
  void ask();
  /// Reports that a window hides the game.
  void want();
  /// Reports that its size has changed.
  void wantAgain();
  void take(GObjectPtr<GdkTexture> picture);
  /// Returns the frame; null if there is none.
  GdkPaintable* picture() const;
  /// Reports that there are no windows any more.
  void drop();

 private:
  static gboolean onRest(gpointer self);

  EventSink events_;
  GObjectPtr<GdkTexture> picture_;
  bool asked_ = false;
  SourceGuard rest_;
};

}  // namespace zovk::helper
