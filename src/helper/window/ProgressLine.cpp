#include "helper/window/ProgressLine.h"

#include <cmath>
#include <utility>

#include "helper/GObjectPtr.h"
#include "helper/layout/StylePriority.h"

namespace zovk::helper {
namespace {

/// The toolkit's theme pulls the bar over the edges of its trough: with no width of its own it
/// would be narrower than nothing, of which the toolkit warns.
constexpr const char* kStyle = "progressbar.popup-progress > trough > progress { margin: 0; }";

void loadStyle() {
  static bool isLoaded = false;
  if (std::exchange(isLoaded, true)) return;
  const auto provider = GObjectPtr<GtkCssProvider>::adopt(gtk_css_provider_new());
  gtk_css_provider_load_from_data(provider.get(), kStyle, -1);
  gtk_style_context_add_provider_for_display(
      gdk_display_get_default(), GTK_STYLE_PROVIDER(provider.get()), kLeastStylePriority);
}

/// A line for a page that is there sooner would only flash, and the window would be painted for it
/// instead of for the page.
constexpr guint kPatienceMilliseconds = 200;

}  // namespace

ProgressLine::ProgressLine(GtkWidget* content)
    : overlay_(GTK_OVERLAY(gtk_overlay_new())), line_(gtk_progress_bar_new()) {
  loadStyle();
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
  loaded_ = loaded;
  if (gtk_widget_get_visible(line_) == TRUE) {
    gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(line_), loaded_);
  } else if (!late_.active()) {
    late_ = SourceGuard(g_timeout_add(kPatienceMilliseconds, onLate, this));
  }
}

gboolean ProgressLine::onLate(gpointer self) {
  auto* progress = static_cast<ProgressLine*>(self);
  progress->late_.forget();
  gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(progress->line_), progress->loaded_);
  gtk_widget_set_visible(progress->line_, TRUE);
  return G_SOURCE_REMOVE;
}

void ProgressLine::hide() {
  page_ = nullptr;
  late_ = {};
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
