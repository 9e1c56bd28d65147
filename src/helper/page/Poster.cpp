#include "helper/page/Poster.h"

#include <algorithm>

namespace zovk::helper {
namespace {

/// A page may have become invisible meanwhile.
constexpr guint kLongest = 500;  // milliseconds

/// The side of the small picture in which something is looked for.
constexpr int kLookSide = 32;

/// Returns whether nothing is in a picture of that size.
bool isBlank(GskRenderNode* node, int width, int height) {
  const CairoSurface small(cairo_image_surface_create(CAIRO_FORMAT_A8, kLookSide, kLookSide));
  const CairoContext context(cairo_create(small.get()));
  cairo_scale(context.get(), static_cast<double>(kLookSide) / std::max(1, width),
              static_cast<double>(kLookSide) / std::max(1, height));
  gsk_render_node_draw(node, context.get());
  cairo_surface_flush(small.get());
  const unsigned char* pixels = cairo_image_surface_get_data(small.get());
  const int size = cairo_image_surface_get_stride(small.get()) * kLookSide;
  return std::all_of(pixels, pixels + size, [](unsigned char alpha) { return alpha == 0; });
}

/// Takes as long as to paint the rest of a frame, so it is done while the frame is waited for.
/// Returns null for a picture that is too large.
CairoSurface pixelsOf(GdkTexture* picture) {
  CairoSurface pixels(cairo_image_surface_create(
      CAIRO_FORMAT_ARGB32, gdk_texture_get_width(picture), gdk_texture_get_height(picture)));
  if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return {};
  gdk_texture_download(picture, cairo_image_surface_get_data(pixels.get()),
                       static_cast<gsize>(cairo_image_surface_get_stride(pixels.get())));
  cairo_surface_mark_dirty(pixels.get());
  return pixels;
}

}  // namespace

void Poster::ask() {
  drop();
  asked_ = GObjectPtr<GCancellable>::adopt(g_cancellable_new());
  webkit_web_view_get_snapshot(WEBKIT_WEB_VIEW(view_), WEBKIT_SNAPSHOT_REGION_VISIBLE,
                               WEBKIT_SNAPSHOT_OPTIONS_NONE, asked_.get(), onPainted, this);
}

void Poster::onPainted(GObject* view, GAsyncResult* result, gpointer self) {
  auto picture = GObjectPtr<GdkTexture>::adopt(
      webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
  // The view lives until it is answered, and this with it.
  if (picture) static_cast<Poster*>(self)->hang(picture.get());
}

void Poster::hang(GdkTexture* picture) {
  picture_ = pixelsOf(picture);
  if (!picture_) return;
  width_ = gtk_widget_get_width(view_);
  height_ = gtk_widget_get_height(view_);
  const double scale = static_cast<double>(gdk_texture_get_width(picture)) / std::max(1, width_);
  cairo_surface_set_device_scale(picture_.get(), scale, scale);
  over_ = SourceGuard(g_timeout_add(kLongest, onOver, this));
  gtk_widget_queue_draw(view_);
}

gboolean Poster::onOver(gpointer self) {
  auto* poster = static_cast<Poster*>(self);
  poster->over_.forget();
  poster->drop();
  gtk_widget_queue_draw(poster->view_);
  return G_SOURCE_REMOVE;
}

void Poster::drop() {
  if (asked_) g_cancellable_cancel(asked_.get());
  asked_ = {};
  picture_.reset();
  over_ = {};
}

bool Poster::fits() const {
  return width_ == gtk_widget_get_width(view_) && height_ == gtk_widget_get_height(view_);
}

bool Poster::paint(GskRenderNode* own, GtkSnapshot* target) {
  if (!hangs()) return false;
  if (!fits() || (own != nullptr && !isBlank(own, width_, height_))) {
    drop();
    return false;
  }
  graphene_rect_t all;
  graphene_rect_init(&all, 0, 0, static_cast<float>(width_), static_cast<float>(height_));
  const CairoContext context(gtk_snapshot_append_cairo(target, &all));
  cairo_set_source_surface(context.get(), picture_.get(), 0, 0);
  cairo_paint(context.get());
  return true;
}

}  // namespace zovk::helper
