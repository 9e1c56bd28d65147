#include "helper/pad/PadLine.h"

namespace zovk::helper {

PadLine::PadLine(GtkOverlay* overlay) : label_(gtk_label_new(nullptr)) {
  gtk_widget_add_css_class(label_, "osd");
  gtk_widget_add_css_class(label_, "popup-pad");
  // However long the names are that the game gives.
  gtk_label_set_ellipsize(GTK_LABEL(label_), PANGO_ELLIPSIZE_END);
  gtk_label_set_max_width_chars(GTK_LABEL(label_), 60);
  gtk_widget_set_halign(label_, GTK_ALIGN_START);
  gtk_widget_set_valign(label_, GTK_ALIGN_END);
  gtk_widget_set_margin_start(label_, 12);
  gtk_widget_set_margin_bottom(label_, 12);
  gtk_widget_set_can_target(label_, FALSE);
  gtk_widget_set_visible(label_, FALSE);
  gtk_overlay_add_overlay(overlay, label_);
}

void PadLine::show(const std::string& text) {
  gtk_label_set_text(GTK_LABEL(label_), text.c_str());
  gtk_widget_set_visible(label_, TRUE);
}

}  // namespace zovk::helper
