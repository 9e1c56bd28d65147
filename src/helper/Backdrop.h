#pragma once

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The game's last frame, for windows that hide the game. The game is asked for it once for each
/// time in which there are windows, and again when one has got another size and kept it for a
/// moment.
class Backdrop {
 public:
  explicit Backdrop(EventSink events);

  /// Asks the game, which answers now if something is to be shown, and else before something is.
  void ask();
  /// A window hides the game.
  void want();
  /// It has another size now.
  void wantAgain();
  void take(GObjectPtr<GdkTexture> picture);
  /// Null while there is none.
  GdkPaintable* picture() const;
  /// There are no windows any more.
  void drop();

 private:
  static gboolean onRest(gpointer self);

  EventSink events_;
  GObjectPtr<GdkTexture> picture_;
  bool asked_ = false;
  SourceGuard rest_;
};

}  // namespace zovk::helper
