#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <zovkpopup/platform/View.h>

namespace zovk {

/// Runs the two steps of a size change.
class TransitionCoordinator {
 public:
  virtual ~TransitionCoordinator() = default;
  /// Runs `alongside` at once. Runs `completion` later on the main thread, when the new arrangement
  /// is on screen or the window is gone.
  virtual void animateAlongside(const std::function<void()>& alongside,
                                std::function<void()> completion) = 0;
};

/// The ways of holding the device that a controller supports; bits to join with `|`.
enum InterfaceOrientationMask : std::uint32_t {
  kInterfacePortrait = 1U << 1U,
  kInterfacePortraitUpsideDown = 1U << 2U,
  kInterfaceLandscapeRight = 1U << 3U,
  kInterfaceLandscapeLeft = 1U << 4U,
};

/// Edges of the screen; bits to join with `|`.
enum ScreenEdgeMask : std::uint32_t {
  kEdgeTop = 1U << 0U,
  kEdgeLeft = 1U << 1U,
  kEdgeBottom = 1U << 2U,
  kEdgeRight = 1U << 3U,
};

/// Controls the contents of a window. Main thread only. The window calls every method and owns its
/// controller. No method may fail.
class ViewController {
 public:
  virtual ~ViewController() = default;
  /// The window has made this controller its root. `view` fills the window.
  virtual void loadView(std::shared_ptr<View> view) = 0;
  virtual void updateViewConstraints() = 0;
  virtual void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) = 0;
  /// Returns an InterfaceOrientationMask, for platforms that turn the screen themselves.
  virtual std::uint32_t supportedInterfaceOrientations() const {
    return kInterfacePortrait | kInterfacePortraitUpsideDown | kInterfaceLandscapeRight |
           kInterfaceLandscapeLeft;
  }
  /// Returns a ScreenEdgeMask: the edges where the system's own gestures need a second swipe.
  virtual std::uint32_t preferredScreenEdgesDeferringSystemGestures() const { return 0; }
  /// The window has released the controller. Stop all work and drop everything held.
  virtual void tearDown() = 0;
  /// The user interface is gone and could not be restored.
  virtual void interfaceDidFail(const std::string& reason) = 0;
};

/// A window over the game. Main thread only. The holder owns it; dropping it closes it. The window
/// owns its root controller and its views. Commands are sent in order. If the window cannot be
/// shown, its root controller gets `interfaceDidFail`.
class Window {
 public:
  virtual ~Window() = default;
  virtual void setBackgroundColor(const Color& color) = 0;
  /// Replaces the root controller; null leaves none. Setting the current one again has no effect.
  /// The old controller is torn down, then the new one loads its view, both before this returns.
  /// The new controller's constraints are updated before the first arrangement.
  virtual void setRootViewController(std::shared_ptr<ViewController> controller) = 0;
  /// Shows the window in front and asks for the keyboard.
  virtual void makeKeyAndVisible() = 0;
  /// Returns whether this was the last window to become the key window, as last reported.
  virtual bool isKeyWindow() const = 0;
  /// Makes the root controller update its constraints before the next arrangement.
  virtual void setNeedsUpdateConstraints() = 0;
};

}  // namespace zovk
