#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// What lies beneath a window's content: nothing where the game is seen through it, and elsewhere a
/// plain dark ground with the game's last frame on it, where there is one.
class Ground {
 public:
  explicit Ground(GtkWidget* content);
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;

  /// The content with the ground beneath it, for the window to own.
  GtkWidget* widget() const { return GTK_WIDGET(overlay_); }
  void setDark(bool dark);
  /// Null for none.
  void setPicture(GdkPaintable* picture);

 private:
  GtkOverlay* overlay_;
  GtkPicture* picture_;
  bool dark_ = false;
};

}  // namespace zovk::helper
