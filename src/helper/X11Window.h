#pragma once

#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "helper/Arguments.h"

namespace zovk::helper {

/// The number of an X11 window.
using X11Id = unsigned long;

/// The display that the toolkit uses when it is an X11 one; null elsewhere.
GdkDisplay* x11Display();

/// The X11 library ends the process on an error unless someone takes it; the windows of other
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

/// Without one, windows stand where they were put, and nobody hands the keyboard around.
bool x11HasWindowManager(GdkDisplay* display);
X11Id x11ActiveWindow(GdkDisplay* display);

/// A window of any program, by its number.
class X11Window {
 public:
  X11Window(GdkDisplay* display, X11Id id) : display_(display), id_(id) {}

  X11Id id() const { return id_; }
  /// Where it stands on the whole screen, in the display's pixels; empty when it is gone.
  Frame frame() const;
  bool isViewable() const;
  /// The work space that it is on, as window managers count them.
  std::optional<unsigned long> workSpace() const;
  std::string title() const;
  /// From now on the display's events tell of its moves, its state and its keyboard.
  void watch() const;

  void moveResize(const Frame& frame) const;
  void setTransientFor(X11Id other) const;
  void endTransience() const;
  /// Dialogs are let stand over other windows at their own size.
  void setDialog() const;
  /// Whether no window manager has a say in it, from the next time it is shown.
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

/// The window behind a realised one of ours; none on other display systems.
std::optional<X11Window> x11WindowOf(GtkWindow* window);

}  // namespace zovk::helper
