#include "helper/window/Ground.h"

#include "helper/layout/ViewStyle.h"

namespace zovk::helper {
namespace {

constexpr GdkRGBA kDark{0.086F, 0.09F, 0.11F, 1};
constexpr GdkRGBA kClear{0, 0, 0, 0};

/// It holds nothing for screen readers.
GtkPicture* newPicture() {
  return GTK_PICTURE(
      g_object_new(GTK_TYPE_PICTURE, "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr));
}

}  // namespace

Ground::Ground(GtkWidget* content)
    : overlay_(GTK_OVERLAY(gtk_overlay_new())), picture_(newPicture()) {
  gtk_picture_set_can_shrink(picture_, TRUE);
  gtk_picture_set_content_fit(picture_, GTK_CONTENT_FIT_CONTAIN);
  gtk_widget_set_can_target(GTK_WIDGET(picture_), FALSE);
  gtk_overlay_set_child(overlay_, GTK_WIDGET(picture_));
  gtk_overlay_add_overlay(overlay_, content);
  // The window is as large as its content wants, however large the frame.
  gtk_overlay_set_measure_overlay(overlay_, content, TRUE);
}

void Ground::setDark(bool dark) {
  if (dark_ == dark) return;
  dark_ = dark;
  setBackground(GTK_WIDGET(picture_), dark ? kDark : kClear);
}

void Ground::setPicture(GdkPaintable* picture) {
  gtk_picture_set_paintable(picture_, picture);
}

}  // namespace zovk::helper
