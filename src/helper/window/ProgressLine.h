#pragma once

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// A thin line along the top of a page that takes its time to load. It is drawn over the window's
/// content, so neither the layouts nor the game need to know of it.
class ProgressLine {
 public:
  explicit ProgressLine(GtkWidget* content);
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Returns the content with the line over it, for the window to own.
  GtkWidget* widget() const { return GTK_WIDGET(overlay_); }
  /// Sets how much of the page has loaded; 1 is all. Ignores pages of other windows.
  void update(GtkWidget* page, double loaded);

 private:
  static gboolean onPosition(GtkOverlay* overlay, GtkWidget* line, GdkRectangle* place,
                             gpointer self);
  static gboolean onLate(gpointer self);
  void hide();

  GtkOverlay* overlay_;
  GtkWidget* line_;
  GtkWidget* page_ = nullptr;  // the one that loads
  double loaded_ = 0;
  SourceGuard late_;  // until the line is shown
};

}  // namespace zovk::helper
