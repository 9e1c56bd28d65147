#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/commands/Arguments.h"
#include "helper/window/WaylandParent.h"
#include "helper/window/X11Window.h"

namespace zovk::helper {

/// The game's window, which belongs to another process. On X11 the display reports about it, by its
/// number. On Wayland only the game can report, and this process cannot change the window.
class GameWindow {
 public:
  /// The callbacks of the owner.
  struct Listener {
    std::function<void()> moved;      ///< Moved, resized, or sent to another work space.
    std::function<void()> minimised;  ///< Minimised, or hidden in another way.
    std::function<void()> restored;
  };
  /// `id` is the X11 window, 0 for none. Sends `window.other` when it becomes the active one.
  /// `handle` is the window's handle from Wayland's exporters, empty for none. `size` is the size
  /// that the game reported, if any.
  GameWindow(X11Id id, const std::string& handle, const Frame& size, EventSink events,
             Listener listener);
  ~GameWindow();
  GameWindow(const GameWindow&) = delete;
  GameWindow& operator=(const GameWindow&) = delete;

  /// Returns the X11 window, or nothing if it is not known.
  const std::optional<X11Window>& window() const { return window_; }
  /// Returns its place in logical pixels; empty if that is not known.
  Frame frame() const;
  /// Returns whether it has the keyboard, or nothing if neither the display nor the game has
  /// reported that.
  std::optional<bool> hasKeyboard() const;
  /// Reports of the game. Those of the display override them.
  void setSize(const Frame& size);
  void setKeyboard(bool has) { toldKeyboard_ = has; }
  /// Sets whether popups take the whole screen, whatever the size of this window.
  void setWholeScreen(bool whole) { wholeScreen_ = whole; }
  bool wholeScreen() const { return wholeScreen_; }
  /// Reports that the display did not put a popup over this window. It will not with the next one.
  void popupWasElsewhere() { popupWasElsewhere_ = true; }
  bool wasPopupElsewhere() const { return popupWasElsewhere_; }
  /// Returns the object that puts windows in front of it on Wayland.
  WaylandParent& waylandParent() { return parent_; }
  /// Gives the keyboard back to it.
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
  bool popupWasElsewhere_ = false;
  gulong handler_ = 0;
};

}  // namespace zovk::helper
