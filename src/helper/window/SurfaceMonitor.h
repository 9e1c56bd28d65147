#pragma once

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Reports a monitor to the content of a window that stands on none. The web engine draws at the
/// rate of the monitor that its window was reported to be on, and without one draws nothing. Parts
/// of an X11 screen can belong to no monitor, and monitors can go while a window is up.
class SurfaceMonitor {
 public:
  explicit SurfaceMonitor(GtkWindow* window) : window_(window) {}
  ~SurfaceMonitor() { stop(); }
  SurfaceMonitor(const SurfaceMonitor&) = delete;
  SurfaceMonitor& operator=(const SurfaceMonitor&) = delete;

  /// Call it once the window is realised.
  void start();
  void stop();
  /// Reports that the window may stand elsewhere, or that there are other monitors.
  void look();

 private:
  static void onLeft(GdkSurface* surface, GdkMonitor* monitor, gpointer self);

  GtkWindow* window_;
  GObjectPtr<GdkSurface> surface_;
  GObjectPtr<GdkMonitor> reported_;  // by this object
};

}  // namespace zovk::helper
