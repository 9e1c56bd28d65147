#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// The layer beneath a window's content. It is empty where the game is seen through the window.
/// Elsewhere it is plain and dark, with the game's last frame on it if there is one.
class Ground {
 public:
  explicit Ground(GtkWidget* content);
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;

  /// Returns the content with the ground beneath it, for the window to own.
  GtkWidget* widget() const { return GTK_WIDGET(overlay_); }
  void setDark(bool dark);
  /// Sets the game's frame; null for none.
  void setPicture(GdkPaintable* picture);

 private:
  GtkOverlay* overlay_;
  GtkPicture* picture_;
  bool dark_ = false;
};

}  // namespace zovk::helper
