#include "helper/page/Poster.h"

#include <algorithm>
#include <cstring>

#include "helper/page/PageScripts.h"
#include "helper/page/TexturePixels.h"
#include "helper/window/X11Window.h"

namespace zovk::helper {
namespace {

/// A page may have become invisible meanwhile.
constexpr guint kLongest = 500;  // milliseconds

/// A page that is busy may answer late.
constexpr guint kMoment = 100;  // milliseconds

/// The height of the strips in which something is looked for.
constexpr int kStrip = 64;

/// The toolkit lets a sixtieth of a second pass after each frame, the empty ones of a window that
/// comes up included. The page's first picture is not to wait for that. A Wayland compositor sets
/// the pace itself.
void paintAtOnce(GtkWidget* view) {
  if (x11Display() == nullptr || gtk_widget_get_mapped(view) == FALSE) return;
  GdkFrameClock* const clock = gtk_widget_get_frame_clock(view);
  g_signal_emit_by_name(clock, "layout");
  g_signal_emit_by_name(clock, "paint");
  gdk_display_flush(gtk_widget_get_display(view));
}

/// Returns whether nothing is in a picture of that size. Scaled down, it would take as long as a
/// frame.
bool isBlank(GskRenderNode* node, int width, int height) {
  const CairoSurface strip(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, kStrip));
  const CairoContext context(cairo_create(strip.get()));
  for (int top = 0; top < height; top += kStrip) {
    // What was drawn so far was blank.
    gsk_render_node_draw(node, context.get());
    cairo_surface_flush(strip.get());
    const unsigned char* pixels = cairo_image_surface_get_data(strip.get());
    const auto size =
        static_cast<std::size_t>(cairo_image_surface_get_stride(strip.get())) * kStrip;
    if (pixels == nullptr || pixels[0] != 0 || std::memcmp(pixels, pixels + 1, size - 1) != 0)
      return false;
    cairo_translate(context.get(), 0, -kStrip);
  }
  return true;
}

}  // namespace

void Poster::begin() {
  drop();
  asked_ = GObjectPtr<GCancellable>::adopt(g_cancellable_new());
  awaited_ = true;
  moment_ = SourceGuard(g_timeout_add(kMoment, onLate, this));
}

void Poster::askEarly() {
  begin();
  // The page's process answers in turn, this before the picture.
  webkit_web_view_evaluate_javascript(WEBKIT_WEB_VIEW(view_), "document.readyState === 'complete'",
                                      -1, kGuardWorld, nullptr, asked_.get(), onState, this);
  askForPicture();
}

void Poster::ask() {
  again_ = awaited_;
  if (hangs() || awaited_) return;
  begin();
  loaded_ = true;
  askForPicture();
}

void Poster::askForPicture() {
  webkit_web_view_get_snapshot(WEBKIT_WEB_VIEW(view_), WEBKIT_SNAPSHOT_REGION_VISIBLE,
                               WEBKIT_SNAPSHOT_OPTIONS_NONE, asked_.get(), onPainted, this);
}

// The view lives until it is answered, and this with it. Of what was given up there is no result.
void Poster::onState(GObject* view, GAsyncResult* result, gpointer self) {
  const auto state = GObjectPtr<JSCValue>::adopt(
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
  if (state) static_cast<Poster*>(self)->loaded_ = jsc_value_to_boolean(state.get()) == TRUE;
}

void Poster::onPainted(GObject* view, GAsyncResult* result, gpointer self) {
  auto picture = GObjectPtr<GdkTexture>::adopt(
      webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
  if (!picture) return;
  auto* poster = static_cast<Poster*>(self);
  poster->awaited_ = false;
  if (poster->loaded_ && poster->isOfSize(picture.get())) return poster->hang(picture.get());
  if (poster->again_) poster->ask();
}

/// A page keeps its old size for a moment when its view is laid out anew.
bool Poster::isOfSize(GdkTexture* picture) const {
  const int scale = gtk_widget_get_scale_factor(view_);
  return !isLaidOut() || (gdk_texture_get_width(picture) == gtk_widget_get_width(view_) * scale &&
                          gdk_texture_get_height(picture) == gtk_widget_get_height(view_) * scale);
}

bool Poster::isLaidOut() const {
  return gtk_widget_get_width(view_) > 0 && gtk_widget_get_height(view_) > 0;
}

void Poster::hang(GdkTexture* picture) {
  picture_ = pixelsOf(picture);
  if (!picture_) return;
  const int scaleOfScreen = gtk_widget_get_scale_factor(view_);
  const bool known = isLaidOut();
  width_ = known ? gtk_widget_get_width(view_) : gdk_texture_get_width(picture) / scaleOfScreen;
  height_ = known ? gtk_widget_get_height(view_) : gdk_texture_get_height(picture) / scaleOfScreen;
  const double scale = static_cast<double>(gdk_texture_get_width(picture)) / std::max(1, width_);
  cairo_surface_set_device_scale(picture_.get(), scale, scale);
  over_ = SourceGuard(g_timeout_add(kLongest, onOver, this));
  gtk_widget_queue_draw(view_);
  if (known) paintAtOnce(view_);
}

gboolean Poster::onLate(gpointer self) {
  auto* poster = static_cast<Poster*>(self);
  poster->moment_.forget();
  gtk_widget_queue_draw(poster->view_);
  return G_SOURCE_REMOVE;
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
  awaited_ = loaded_ = again_ = false;
  picture_.reset();
  moment_ = {};
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
