#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include <zovkpopup/platform/Geometry.h>

namespace zovk {

/// A view of the popup screen, held by a handle. Commands are sent in order, and none returns
/// anything. Main thread only; calls nothing back. The handle does not own the view: a view lives
/// while it is in a window or has a handle. A command to a view that does not exist, because its
/// layout lacks it or is gone, has no effect.
class View {
 public:
  virtual ~View() = default;

  /// Puts `child` in front of the other children, and removes it from its old parent.
  virtual void addSubview(const View& child) = 0;
  virtual void sendSubviewToBack(const View& child) = 0;
  virtual void removeFromSuperview() = 0;

  virtual void setHidden(bool hidden) = 0;
  virtual void setAlpha(double alpha) = 0;
  virtual void setBackgroundColor(const Color& color) = 0;
  virtual void setClipsToBounds(bool clips) = 0;
  /// Sets the picture of a button in its normal state. If the file is not a picture, the button has
  /// none.
  virtual void setImage(const std::string& path) = 0;

  /// Makes the four edges follow those of `container`.
  virtual void pinEdgesTo(const View& container) = 0;
  /// Puts the top edge `offset` below the top of `view`, or of its safe area.
  virtual void pinTopTo(const View& view, bool safeArea, double offset) = 0;
  /// Puts the bottom edge at the top edge of the first of `candidates` that exists.
  virtual void pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) = 0;
};

/// Receives the presses of a layout's buttons.
class LayoutOwner {
 public:
  virtual ~LayoutOwner() = default;
  /// Called on the main thread. `action` is the name that the layout connects to the button.
  virtual void performAction(const std::string& action) = 0;
};

/// A loaded layout: its root and its views by name. Main thread only. Dropping it removes its views
/// from the window. It is never null: if the layout was not found, its views do not exist.
class Layout {
 public:
  virtual ~Layout() = default;
  virtual std::shared_ptr<View> root() const = 0;
  virtual std::shared_ptr<View> outlet(const std::string& name) const = 0;
};

}  // namespace zovk
