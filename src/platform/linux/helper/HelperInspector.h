#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <sys/types.h>

#include "zovkpopup/platform/Geometry.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// Examines what is on screen, for tests, demos and tools; the engine does not use it. Main thread
/// only; completions come from the pump. Without a helper or a window every completion gets false.
class HelperInspector {
 public:
  using Completion = std::function<void(bool done)>;
  struct ViewFrame {
    Rect frame;  ///< Relative to the window.
    bool visible = false;
  };

  virtual ~HelperInspector() = default;
  /// Writes a PNG of `window`, or of the window that was shown last, once it is painted.
  virtual void snapshot(const Window* window, const std::string& path, Completion completion) = 0;
  /// Calls `completion` when all earlier commands have been carried out and painted.
  virtual void sync(Completion completion) = 0;
  /// Returns the last reported place of a view that the newest layout calls `outlet`, in the window
  /// that was shown last. A view that was not asked for before has a place after the next `sync`.
  virtual std::optional<ViewFrame> viewFrame(const std::string& outlet) const = 0;
  /// Returns whether the window that was shown last has the keyboard, as far as the helper
  /// reported.
  virtual bool hasKeyboard() const = 0;
  /// Ends the web process of the newest web view, as a crash would.
  virtual void terminateWebProcess() = 0;
  /// Returns the process of the helper program, or 0 if none runs.
  virtual pid_t helperProcessId() const = 0;
};

}  // namespace zovk
