#pragma once

#include <gtk/gtk.h>

#include "helper/CairoPtr.h"
#include "helper/window/Screen.h"

namespace zovk::helper {

/// Keeps the memory in which a window's pictures are drawn and handed to the X server. Otherwise
/// the system makes and clears it anew for every picture, which takes half of the time of painting
/// it.
class PictureMemory {
 public:
  /// Makes libraries keep the memory that they free. Call it before other threads run.
  static void keepFreed();

  /// Keeps what a picture of that size takes, beginning with one for `window`. Nothing is kept on
  /// other display systems.
  void keep(GtkWidget* window, const Frame& size);

 private:
  /// Returns what is drawn on when something is drawn on the X server's window.
  static CairoSurface drawn(GdkSurface* window);

  CairoSurface shared_;
};

}  // namespace zovk::helper
