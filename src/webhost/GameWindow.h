#pragma once

#include <gtk/gtk.h>

#include "webhost/Events.h"

namespace zovk {

/// The game's own window, which belongs to another process. It is known on X11 only; without one
/// nothing here has an effect, except that a popup can be moved on X11.
class GameWindow {
 public:
  /// `id` is the X11 window, 0 for none. Sends `window.other` when it becomes the active one.
  GameWindow(unsigned long id, EventSink events);
  ~GameWindow();
  GameWindow(const GameWindow&) = delete;
  GameWindow& operator=(const GameWindow&) = delete;

  /// Keeps a realised popup in front of the game's window and lets it have the keyboard.
  void adopt(GtkWindow* popup) const;
  /// Puts a popup where the game wants it.
  static void move(GtkWindow* popup, int x, int y);
  /// Gives the keyboard back.
  void activate() const;

 private:
  static gboolean onXEvent(GdkDisplay* display, void* event, gpointer self);
  void watchActiveWindow();
  bool isActive() const;

  unsigned long id_;
  EventSink events_;
  GdkDisplay* display_;
  gulong handler_ = 0;
};

}  // namespace zovk
