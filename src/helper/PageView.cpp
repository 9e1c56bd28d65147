#include "helper/PageView.h"

#include <algorithm>

#include "helper/PageDrawing.h"

namespace zovk::helper {
namespace {

constexpr const char* kPainted = "zovk-painted";
constexpr gint64 kRest = 80 * G_TIME_SPAN_MILLISECOND;
constexpr gint64 kRestless = 400 * G_TIME_SPAN_MILLISECOND;

/// Returns the time at which the view was last painted with something of its page; 0 for never.
gint64& paintedAt(gpointer view) {
  auto* time = static_cast<gint64*>(g_object_get_data(G_OBJECT(view), kPainted));
  if (time == nullptr) {
    time = g_new0(gint64, 1);
    g_object_set_data_full(G_OBJECT(view), kPainted, time, g_free);
  }
  return *time;
}

void snapshot(GtkWidget* view, GtkSnapshot* picture) {
  GtkSnapshot* page = gtk_snapshot_new();
  GTK_WIDGET_CLASS(g_type_class_peek(WEBKIT_TYPE_WEB_VIEW))->snapshot(view, page);
  GskRenderNode* node = gtk_snapshot_free_to_node(page);
  if (node == nullptr) return;
  gtk_snapshot_append_node(picture, node);
  gsk_render_node_unref(node);
  paintedAt(view) = g_get_monotonic_time();
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

bool waitsForPicture(WebKitWebView* view) {
  return drawsWithGl(view) && paintedAt(view) == 0 && webkit_web_view_get_uri(view) != nullptr;
}

bool showsAnswer(WebKitWebView* view, gint64 answered) {
  if (waitsForPicture(view)) return false;
  const gint64 now = g_get_monotonic_time();
  return !drawsWithGl(view) || now - std::max(paintedAt(view), answered) >= kRest ||
         now - answered >= kRestless;
}

}  // namespace zovk::helper
