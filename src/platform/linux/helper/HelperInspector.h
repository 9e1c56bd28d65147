#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <sys/types.h>

#include "zovkpopup/platform/Geometry.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// A look at what is on screen, for tests, demos and tools; the engine does without it. Main
/// thread only, completions come from the pump. Without a helper or a window every completion
/// hears false.
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
  /// Completes when all earlier commands are carried out and painted.
  virtual void sync(Completion completion) = 0;
  /// Where a view that the youngest layout calls `outlet` stands in the window that was shown last,
  /// as last heard. A view that nobody has asked for yet has a place after the next `sync`.
  virtual std::optional<ViewFrame> viewFrame(const std::string& outlet) const = 0;
  /// Ends the web process of the youngest web view, as a crash would.
  virtual void terminateWebProcess() = 0;
  /// The helper program, 0 when none runs.
  virtual pid_t helperProcessId() const = 0;
};

}  // namespace zovk
