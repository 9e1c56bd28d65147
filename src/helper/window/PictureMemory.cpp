#include "helper/window/PictureMemory.h"

#include <algorithm>

#include <cairo-xlib.h>
#include <gdk/x11/gdkx.h>
#include <malloc.h>

namespace zovk::helper {
namespace {

constexpr int kMebibyte = 1024 * 1024;
/// The largest that the C library allows: a picture of a 4K screen.
constexpr int kLargestKept = 32 * kMebibyte;
constexpr int kMostFree = 64 * kMebibyte;
/// The side of a small picture, but not of one too small to be shared.
constexpr int kSmallSide = 64;

}  // namespace

CairoSurface PictureMemory::drawn(GdkSurface* window) {
  Display* connection = gdk_x11_display_get_xdisplay(gdk_surface_get_display(window));
  const Window id = gdk_x11_surface_get_xid(window);
  XWindowAttributes attributes{};
  XGetWindowAttributes(connection, id, &attributes);
  return CairoSurface(cairo_xlib_surface_create(connection, id, attributes.visual, 1, 1));
}

void PictureMemory::keepFreed() {
  mallopt(M_MMAP_THRESHOLD, kLargestKept);
  mallopt(M_TRIM_THRESHOLD, kMostFree);
}

void PictureMemory::keep(GtkWidget* window, const Frame& size) {
  GdkSurface* place = gtk_native_get_surface(GTK_NATIVE(window));
  if (shared_ || !GDK_IS_X11_SURFACE(place)) return;
  const CairoSurface server = drawn(place);
  // The drawing library shares memory with the X server in pools, in each of which several pictures
  // have room, and gives a pool back once it is empty. A small picture keeps it.
  const CairoSurface whole(cairo_surface_create_similar_image(
      server.get(), CAIRO_FORMAT_ARGB32, std::max(size.width, 1), std::max(size.height, 1)));
  shared_.reset(cairo_surface_create_similar_image(server.get(), CAIRO_FORMAT_ARGB32, kSmallSide,
                                                   kSmallSide));
}

}  // namespace zovk::helper
