#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <zovkpopup/platform/View.h>

namespace zovk {

/// Runs the two steps of a change of size.
class TransitionCoordinator {
 public:
  virtual ~TransitionCoordinator() = default;
  /// `alongside` runs at once, `completion` later on the main thread, when the new arrangement is
  /// on screen or the window is gone.
  virtual void animateAlongside(const std::function<void()>& alongside,
                                std::function<void()> completion) = 0;
};

/// The ways to hold the device in which a controller is shown; bits, to be joined by `|`.
enum InterfaceOrientationMask : std::uint32_t {
  kInterfacePortrait = 1U << 1U,
  kInterfacePortraitUpsideDown = 1U << 2U,
  kInterfaceLandscapeRight = 1U << 3U,
  kInterfaceLandscapeLeft = 1U << 4U,
};

/// Edges of the screen; bits, to be joined by `|`.
enum ScreenEdgeMask : std::uint32_t {
  kEdgeTop = 1U << 0U,
  kEdgeLeft = 1U << 1U,
  kEdgeBottom = 1U << 2U,
  kEdgeRight = 1U << 3U,
};

/// The object behind what a window shows. Main thread only, every method called by the window,
/// which owns its controller. No method may fail.
class ViewController {
 public:
  virtual ~ViewController() = default;
  /// The window has made the controller its root; `view` fills the window.
  virtual void loadView(std::shared_ptr<View> view) = 0;
  virtual void updateViewConstraints() = 0;
  virtual void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) = 0;
  /// An InterfaceOrientationMask, for platforms that turn the screen themselves.
  virtual std::uint32_t supportedInterfaceOrientations() const {
    return kInterfacePortrait | kInterfacePortraitUpsideDown | kInterfaceLandscapeRight |
           kInterfaceLandscapeLeft;
  }
  /// A ScreenEdgeMask: where the system's own gestures need a second swipe.
  virtual std::uint32_t preferredScreenEdgesDeferringSystemGestures() const { return 0; }
  /// The window has let the controller go: it stops what it does and drops what it holds.
  virtual void tearDown() = 0;
  /// The user interface is gone and could not be brought back.
  virtual void interfaceDidFail(const std::string& reason) = 0;
};

/// A window over the game. Main thread only; the holder owns it, dropping it closes it. It owns
/// its root controller and views. Commands go out in order; a window that cannot be shown tells
/// its root controller so through `interfaceDidFail`.
class Window {
 public:
  virtual ~Window() = default;
  virtual void setBackgroundColor(const Color& color) = 0;
  /// Replaces the root controller; null leaves none, the one that is there stays as it is. The old
  /// one is torn down, then the new one loads its view, both before this returns; the new one's
  /// constraints are updated before the first arrangement.
  virtual void setRootViewController(std::shared_ptr<ViewController> controller) = 0;
  /// Shows the window in front and asks for the keyboard.
  virtual void makeKeyAndVisible() = 0;
  /// Whether it last became the key window, as last heard.
  virtual bool isKeyWindow() const = 0;
  /// Has the root controller update its constraints before the next arrangement.
  virtual void setNeedsUpdateConstraints() = 0;
};

}  // namespace zovk
