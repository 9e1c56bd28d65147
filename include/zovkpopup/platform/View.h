#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include <zovkpopup/platform/Geometry.h>

namespace zovk {

/// A view of the popup screen, held by a handle: commands go out in order and nothing is asked
/// back. Main thread only; nothing is called back. The handle does not own the view: a view lives
/// while it stands in a window or a handle to it is held. A command to a view that is not there,
/// because its layout lacks it or is gone, has no effect.
class View {
 public:
  virtual ~View() = default;

  /// Puts `child` in front of the other children, taking it out of where it was.
  virtual void addSubview(const View& child) = 0;
  virtual void sendSubviewToBack(const View& child) = 0;
  virtual void removeFromSuperview() = 0;

  virtual void setHidden(bool hidden) = 0;
  virtual void setAlpha(double alpha) = 0;
  virtual void setBackgroundColor(const Color& color) = 0;
  virtual void setClipsToBounds(bool clips) = 0;
  /// The picture that a button shows in its normal state. A file that is no picture leaves none.
  virtual void setImage(const std::string& path) = 0;

  /// The four edges follow those of `container`.
  virtual void pinEdgesTo(const View& container) = 0;
  /// The top edge lies `offset` below the top of `view`, or of its safe area.
  virtual void pinTopTo(const View& view, bool safeArea, double offset) = 0;
  /// The bottom edge lies at the top edge of the first of `candidates` that is there.
  virtual void pinBottomToTopOfFirst(std::initializer_list<const View*> candidates) = 0;
};

/// Receives what the user does with the buttons of a layout.
class LayoutOwner {
 public:
  virtual ~LayoutOwner() = default;
  /// `action` is the name that the layout connects to the button. Called on the main thread.
  virtual void performAction(const std::string& action) = 0;
};

/// A loaded layout: its root and its views by name. Main thread only. Dropping it takes its views
/// out of the window. It is never null: a layout that cannot be found has views that are not there.
class Layout {
 public:
  virtual ~Layout() = default;
  virtual std::shared_ptr<View> root() const = 0;
  virtual std::shared_ptr<View> outlet(const std::string& name) const = 0;
};

}  // namespace zovk
