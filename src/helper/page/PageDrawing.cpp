#include "helper/page/PageDrawing.h"

#include "helper/page/PageView.h"

namespace zovk::helper {
namespace {

void useGl(WebKitSettings* settings, bool use) {
  webkit_settings_set_hardware_acceleration_policy(
      settings,
      use ? WEBKIT_HARDWARE_ACCELERATION_POLICY_ALWAYS : WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
}

}  // namespace

// Until the second page's picture comes, the engine shows the first page's.
bool PageDrawing::hasPoster() const {
  return !hadPage_ && drawing_ == Drawing::kSoftware && drawsWithGl(view_);
}

void PageDrawing::pageCame() {
  if (hasPoster()) showPosterEarly(view_);
  if (!seeThrough_ || drawsWithGl(view_)) return;
  // A view of another size begins with a clear picture.
  GtkWidget* widget = GTK_WIDGET(view_);
  gtk_widget_set_margin_bottom(widget, gtk_widget_get_margin_bottom(widget) == 0 ? 1 : 0);
}

void PageDrawing::pageLoaded() {
  if (hasPoster()) showPoster(view_);
  hadPage_ = true;
}

void PageDrawing::crashed() {
  if (drawing_ == Drawing::kHardware) useGl(webkit_web_view_get_settings(view_), false);
}

void preparePages(WebKitSettings* settings, Drawing drawing, bool opaque) {
  useGl(settings, drawing == Drawing::kHardware || (drawing == Drawing::kSoftware && !opaque));
}

bool drawsWithGl(WebKitWebView* view) {
  return webkit_settings_get_hardware_acceleration_policy(webkit_web_view_get_settings(view)) ==
         WEBKIT_HARDWARE_ACCELERATION_POLICY_ALWAYS;
}

}  // namespace zovk::helper
