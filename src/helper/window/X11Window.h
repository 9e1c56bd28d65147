#pragma once

#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "helper/commands/Arguments.h"

namespace zovk::helper {

/// The number of an X11 window.
using X11Id = unsigned long;

/// Returns the toolkit's display if it is an X11 one, and null otherwise.
GdkDisplay* x11Display();

/// Catches X11 errors, on which the X11 library would end the process. The windows of other
/// programs can go at any time.
class X11ErrorTrap {
 public:
  explicit X11ErrorTrap(GdkDisplay* display);
  ~X11ErrorTrap();
  X11ErrorTrap(const X11ErrorTrap&) = delete;
  X11ErrorTrap& operator=(const X11ErrorTrap&) = delete;

 private:
  GdkDisplay* display_;
};

/// Returns whether there is a window manager. Without one, windows stay where they were put, and
/// nothing moves the keyboard.
bool x11HasWindowManager(GdkDisplay* display);
X11Id x11ActiveWindow(GdkDisplay* display);
/// Returns how many pixels of the display one logical pixel takes along each side.
int x11Scale(GdkDisplay* display);

/// A window of any program, by its number.
class X11Window {
 public:
  X11Window(GdkDisplay* display, X11Id id) : display_(display), id_(id) {}

  X11Id id() const { return id_; }
  /// Returns its place on the whole screen, in the display's pixels; empty if it is gone.
  Frame frame() const;
  /// Returns the same in logical pixels.
  Frame logicalFrame() const;
  bool isViewable() const;
  /// Returns whether `other`, or the frame around it, stands above this window. X11 gives the
  /// pointer's clicks to the upper one.
  bool isBelow(X11Id other) const;
  /// Returns its work space, as window managers count them.
  std::optional<unsigned long> workSpace() const;
  std::string title() const;
  /// Makes the display's events report its moves, its state and its keyboard from now on.
  void watch() const;

  void moveResize(const Frame& frame) const;
  /// Puts it above all others, even if a window manager does not restack windows on request.
  void raise() const;
  void setTransientFor(X11Id other) const;
  void endTransience() const;
  /// Makes it a dialog: dialogs may stand over other windows at their own size.
  void setDialog() const;
  /// Sets whether window managers ignore it, from the next time it is shown.
  void setUnmanaged(bool unmanaged) const;
  void askForWorkSpace(unsigned long number) const;
  void askToBeActive() const;
  void takeKeyboard() const;

 private:
  void sendRequest(const char* type, long first, long second) const;
  std::optional<unsigned long> cardinal(const char* property) const;

  GdkDisplay* display_;
  X11Id id_;
};

/// Returns the X11 window of a realised window of ours; nothing on other display systems.
std::optional<X11Window> x11WindowOf(GtkWindow* window);

}  // namespace zovk::helper
