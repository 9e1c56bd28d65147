#include "helper/window/Snapshot.h"

#include <memory>
#include <utility>

#include "helper/GObjectPtr.h"
#include "helper/page/PageView.h"

namespace zovk::helper {
namespace {

struct NodeUnref {
  void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};
/// The second frame begins when the first one has been handed over.
constexpr const char* kTwoFrames =
    "await new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)))";
/// Keeps the script apart from those of the page.
constexpr const char* kScriptWorld = "zovkpopup";
constexpr guint kPageMilliseconds = 1000;
/// Software GL takes its time where processors are few or busy.
constexpr guint kFirstPictureMilliseconds = 10000;
constexpr guint kLookMilliseconds = 10;

/// Somebody who waits for a page's paint. It goes once that somebody was served and the page has
/// answered, which it may do long after.
struct PagePaint {
  GObjectPtr<WebKitWebView> view;
  std::function<void()> next;
  SourceGuard deadline;
  SourceGuard look;
  gint64 answered = 0;  // when the page did

  static void finish(PagePaint* paint) {
    paint->deadline = {};
    paint->look = {};
    if (const auto due = std::exchange(paint->next, nullptr)) due();
    if (paint->answered != 0) delete paint;
  }
};

/// The script of a page that is still loading can be answered very late.
gboolean onDeadline(gpointer data) {
  auto* paint = static_cast<PagePaint*>(data);
  paint->deadline.forget();
  PagePaint::finish(paint);
  return G_SOURCE_REMOVE;
}

gboolean onLook(gpointer data) {
  auto* paint = static_cast<PagePaint*>(data);
  if (!showsAnswer(paint->view.get(), paint->answered)) return G_SOURCE_CONTINUE;
  paint->look.forget();
  PagePaint::finish(paint);
  return G_SOURCE_REMOVE;
}

void onPainted(GObject* view, GAsyncResult* result, gpointer data) {
  auto* paint = static_cast<PagePaint*>(data);
  ErrorOut error;
  const auto nothing = GObjectPtr<JSCValue>::adopt(
      webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(view), result, error));
  paint->answered = g_get_monotonic_time();
  if (!paint->next || showsAnswer(paint->view.get(), paint->answered))
    return PagePaint::finish(paint);
  paint->look = SourceGuard(g_timeout_add(kLookMilliseconds, onLook, paint));
}

using NodePtr = std::unique_ptr<GskRenderNode, NodeUnref>;

NodePtr drawn(GtkWidget* window, int width, int height) {
  const auto paintable = GObjectPtr<GdkPaintable>::adopt(gtk_widget_paintable_new(window));
  GtkSnapshot* snapshot = gtk_snapshot_new();
  gdk_paintable_snapshot(paintable.get(), GDK_SNAPSHOT(snapshot), width, height);
  return NodePtr(gtk_snapshot_free_to_node(snapshot));
}

}  // namespace

void whenPagePainted(WebKitWebView* view, std::function<void()> next) {
  auto paint = std::make_unique<PagePaint>();
  paint->view = GObjectPtr<WebKitWebView>::retain(view);
  paint->next = std::move(next);
  const guint patience = waitsForPicture(view) ? kFirstPictureMilliseconds : kPageMilliseconds;
  paint->deadline = SourceGuard(g_timeout_add(patience, onDeadline, paint.get()));
  webkit_web_view_call_async_javascript_function(view, kTwoFrames, -1, nullptr, kScriptWorld,
                                                 nullptr, nullptr, onPainted, paint.release());
}

bool writeSnapshot(GtkWidget* window, const std::string& path) {
  const int scale = gtk_widget_get_scale_factor(window);
  const int width = gtk_widget_get_width(window) * scale;
  const int height = gtk_widget_get_height(window) * scale;
  GskRenderer* renderer = gtk_native_get_renderer(GTK_NATIVE(window));
  if (width <= 0 || height <= 0 || renderer == nullptr) return false;
  const NodePtr node = drawn(window, width, height);
  if (!node) return false;
  graphene_rect_t area;
  graphene_rect_init(&area, 0, 0, static_cast<float>(width), static_cast<float>(height));
  const auto texture =
      GObjectPtr<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, node.get(), &area));
  return texture && gdk_texture_save_to_png(texture.get(), path.c_str());
}

}  // namespace zovk::helper
