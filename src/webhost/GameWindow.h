#pragma once

#include <functional>

#include <gtk/gtk.h>

#include "webhost/Arguments.h"
#include "webhost/Events.h"
#include "webhost/X11Window.h"

namespace zovk {

/// The game's own window, which belongs to another process. It is known on X11 only; without one
/// nothing here has an effect.
class GameWindow {
 public:
  /// What the owner wants to hear.
  struct Listener {
    std::function<void()> moved;      ///< Or resized, or sent to another work space.
    std::function<void()> minimised;  ///< Or hidden in another way.
    std::function<void()> restored;
  };
  /// `id` is the X11 window, 0 for none. Sends `window.other` when it becomes the active one.
  GameWindow(X11Id id, EventSink events, Listener listener);
  ~GameWindow();
  GameWindow(const GameWindow&) = delete;
  GameWindow& operator=(const GameWindow&) = delete;

  /// None where it is not known.
  const std::optional<X11Window>& window() const { return window_; }
  /// Where it stands, in logical pixels; empty when that is not known.
  Frame frame() const;
  /// Whether it has the keyboard, as far as the display tells.
  bool isActive() const;
  /// Gives the keyboard back.
  void activate() const;

 private:
  static gboolean onXEvent(GdkDisplay* display, void* event, gpointer self);
  void watch();
  void onRootProperty(unsigned long atom) const;
  void onWindowEvent(const void* event);

  EventSink events_;
  Listener listener_;
  GdkDisplay* display_;
  std::optional<X11Window> window_;
  gulong handler_ = 0;
};

/// How many pixels of the display one logical pixel takes along each side.
int x11Scale(GdkDisplay* display);

}  // namespace zovk
