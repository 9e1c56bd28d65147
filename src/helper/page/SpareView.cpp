#include "helper/page/SpareView.h"

#include <algorithm>
#include <utility>

namespace zovk::helper {

// The window stays: GTK fails on one that is destroyed before it was ever shown.
SpareView::SpareView() : window_(GTK_WINDOW(gtk_window_new())) {
  gtk_widget_realize(GTK_WIDGET(window_));
}

SpareView::~SpareView() {
  take();
}

void SpareView::put(GObjectPtr<WebKitWebView> view, const Frame& size) {
  view_ = std::move(view);
  GtkWidget* widget = GTK_WIDGET(view_.get());
  gtk_window_set_child(window_, widget);
  gtk_widget_realize(widget);
  // The toolkit wants to have been asked for sizes before it is given one.
  gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
  gtk_widget_measure(widget, GTK_ORIENTATION_VERTICAL, -1, nullptr, nullptr, nullptr, nullptr);
  gtk_widget_allocate(widget, std::max(size.width, 1), std::max(size.height, 1), -1, nullptr);
  gtk_widget_map(widget);
}

GObjectPtr<WebKitWebView> SpareView::take() {
  if (!view_) return {};
  gtk_window_set_child(window_, nullptr);
  return std::exchange(view_, {});
}

}  // namespace zovk::helper
