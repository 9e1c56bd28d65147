#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "helper/Arguments.h"
#include "helper/Events.h"
#include "helper/WaylandParent.h"
#include "helper/X11Window.h"

namespace zovk::helper {

/// The game's own window, which belongs to another process. On X11 the display tells of it, by its
/// number; on Wayland only the game can, and nothing can be done to it.
class GameWindow {
 public:
  /// What the owner wants to hear.
  struct Listener {
    std::function<void()> moved;      ///< Or resized, or sent to another work space.
    std::function<void()> minimised;  ///< Or hidden in another way.
    std::function<void()> restored;
  };
  /// `id` is the X11 window, 0 for none. Sends `window.other` when it becomes the active one.
  /// `handle` is what Wayland's exporters gave for it, empty for none.
  /// `size` is what the game told of it, if anything.
  GameWindow(X11Id id, const std::string& handle, const Frame& size, EventSink events,
             Listener listener);
  ~GameWindow();
  GameWindow(const GameWindow&) = delete;
  GameWindow& operator=(const GameWindow&) = delete;

  /// None where it is not known.
  const std::optional<X11Window>& window() const { return window_; }
  /// Where it stands, in logical pixels; empty when that is not known.
  Frame frame() const;
  /// Whether it has the keyboard; absent when neither the display nor the game told.
  std::optional<bool> hasKeyboard() const;
  /// What the game tells of it. What the display tells counts more.
  void setSize(const Frame& size);
  void setKeyboard(bool has) { toldKeyboard_ = has; }
  /// Whether popups take the whole screen, whatever the size of this window.
  void setWholeScreen(bool whole) { wholeScreen_ = whole; }
  bool wholeScreen() const { return wholeScreen_; }
  /// By which windows stand before it on Wayland.
  WaylandParent& waylandParent() { return parent_; }
  /// Gives the keyboard back.
  void activate() const;

 private:
  static gboolean onXEvent(GdkDisplay* display, void* event, gpointer self);
  void watch();
  bool isActive() const;
  void onRootProperty(unsigned long atom) const;
  void onWindowEvent(const void* event);

  EventSink events_;
  Listener listener_;
  GdkDisplay* display_;
  std::optional<X11Window> window_;
  WaylandParent parent_;
  Frame toldSize_;
  std::optional<bool> toldKeyboard_;
  bool wholeScreen_ = false;
  gulong handler_ = 0;
};

/// How many pixels of the display one logical pixel takes along each side.
int x11Scale(GdkDisplay* display);

}  // namespace zovk::helper
