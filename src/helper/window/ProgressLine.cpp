#include "helper/window/ProgressLine.h"

#include <cmath>

namespace zovk::helper {

ProgressLine::ProgressLine(GtkWidget* content)
    : overlay_(GTK_OVERLAY(gtk_overlay_new())), line_(gtk_progress_bar_new()) {
  gtk_widget_add_css_class(line_, "osd");
  gtk_widget_add_css_class(line_, "popup-progress");
  gtk_widget_set_valign(line_, GTK_ALIGN_START);
  gtk_widget_set_can_target(line_, FALSE);
  gtk_widget_set_visible(line_, FALSE);
  gtk_overlay_set_child(overlay_, content);
  gtk_overlay_add_overlay(overlay_, line_);
  g_signal_connect(overlay_, "get-child-position", G_CALLBACK(onPosition), this);
}

void ProgressLine::update(GtkWidget* page, double loaded) {
  if (loaded >= 1) return page == page_ ? hide() : void();
  if (!gtk_widget_is_ancestor(page, widget())) return;
  page_ = page;
  gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(line_), loaded);
  gtk_widget_set_visible(line_, TRUE);
}

void ProgressLine::hide() {
  page_ = nullptr;
  gtk_widget_set_visible(line_, FALSE);
}

gboolean ProgressLine::onPosition(GtkOverlay* overlay, GtkWidget* line, GdkRectangle* place,
                                  gpointer self) {
  const auto* progress = static_cast<ProgressLine*>(self);
  if (line != progress->line_) return FALSE;
  GtkWidget* page = progress->page_;
  graphene_rect_t bounds;
  if (page == nullptr || !gtk_widget_compute_bounds(page, GTK_WIDGET(overlay), &bounds)) {
    return FALSE;
  }
  int height = 0;
  gtk_widget_measure(line, GTK_ORIENTATION_VERTICAL, -1, &height, nullptr, nullptr, nullptr);
  const auto whole = [](float length) { return static_cast<int>(std::lround(length)); };
  *place = {whole(bounds.origin.x), whole(bounds.origin.y), whole(bounds.size.width), height};
  return TRUE;
}

}  // namespace zovk::helper
