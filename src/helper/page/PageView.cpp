#include "helper/page/PageView.h"

#include <algorithm>

#include "helper/page/PageDrawing.h"
#include "helper/page/Poster.h"

namespace zovk::helper {
namespace {

constexpr const char* kPicture = "zovk-picture";
constexpr gint64 kRest = 80 * G_TIME_SPAN_MILLISECOND;
constexpr gint64 kRestless = 400 * G_TIME_SPAN_MILLISECOND;

/// What is known of a view's picture.
struct Picture {
  explicit Picture(GtkWidget* view) : poster(view) {}

  /// Returns whether the engine's picture is still the empty one of before the first page.
  bool isEmpty() const { return !isOfPage || (paintedAt == 0 && poster.isExpected()); }

  bool isOfPage = false;  ///< A page has come; before it the engine draws an empty one.
  gint64 paintedAt = 0;   ///< When the view was last painted with something of a page; 0 for never.
  Poster poster;
};

Picture& pictureOf(gpointer view) {
  auto* picture = static_cast<Picture*>(g_object_get_data(G_OBJECT(view), kPicture));
  if (picture != nullptr) return *picture;
  picture = new Picture(GTK_WIDGET(view));
  g_object_set_data_full(G_OBJECT(view), kPicture, picture,
                         [](gpointer data) { delete static_cast<Picture*>(data); });
  return *picture;
}

bool isSeeThrough(GtkWidget* view) {
  GdkRGBA background;
  webkit_web_view_get_background_color(WEBKIT_WEB_VIEW(view), &background);
  return background.alpha < 1;
}

/// `node` is what the engine paints, and may be null.
void append(GtkWidget* view, GskRenderNode* node, GtkSnapshot* target) {
  Picture& picture = pictureOf(view);
  if (picture.poster.paint(node, target)) return;
  // A see-through view without a page shows nothing; to paint that takes as long as a page.
  if (node == nullptr || (picture.isEmpty() && isSeeThrough(view))) return;
  gtk_snapshot_append_node(target, node);
  if (picture.isOfPage) picture.paintedAt = g_get_monotonic_time();
}

void snapshot(GtkWidget* view, GtkSnapshot* target) {
  GtkSnapshot* page = gtk_snapshot_new();
  GTK_WIDGET_CLASS(g_type_class_peek(WEBKIT_TYPE_WEB_VIEW))->snapshot(view, page);
  GskRenderNode* node = gtk_snapshot_free_to_node(page);
  append(view, node, target);
  if (node != nullptr) gsk_render_node_unref(node);
}

void initializeClass(gpointer type, gpointer) {
  GTK_WIDGET_CLASS(type)->snapshot = snapshot;
}

GType registerType() {
  GTypeQuery base;
  g_type_query(WEBKIT_TYPE_WEB_VIEW, &base);
  return g_type_register_static_simple(WEBKIT_TYPE_WEB_VIEW, "ZovkPage", base.class_size,
                                       initializeClass, base.instance_size, nullptr,
                                       static_cast<GTypeFlags>(0));
}

}  // namespace

GType pageViewType() {
  static const GType type = registerType();
  return type;
}

void expectPicture(WebKitWebView* view) {
  Picture& picture = pictureOf(view);
  picture.isOfPage = true;
  picture.poster.drop();
}

void showPosterEarly(WebKitWebView* view) {
  pictureOf(view).poster.askEarly();
}

void showPoster(WebKitWebView* view) {
  pictureOf(view).poster.ask();
}

bool showsPoster(WebKitWebView* view) {
  return pictureOf(view).poster.hangs();
}

bool waitsForPicture(WebKitWebView* view) {
  return drawsWithGl(view) && (pictureOf(view).paintedAt == 0 || showsPoster(view)) &&
         webkit_web_view_get_uri(view) != nullptr;
}

bool showsAnswer(WebKitWebView* view, gint64 answered) {
  if (waitsForPicture(view)) return false;
  const gint64 now = g_get_monotonic_time();
  return !drawsWithGl(view) || now - std::max(pictureOf(view).paintedAt, answered) >= kRest ||
         now - answered >= kRestless;
}

}  // namespace zovk::helper
