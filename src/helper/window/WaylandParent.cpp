#include "helper/window/WaylandParent.h"

#include <cstring>
#include <utility>

#include <gdk/wayland/gdkwayland.h>
#include <wayland-client.h>
#include <xdg-foreign-unstable-v2.h>

namespace zovk::helper {

/// The compositor's list of what it can, which the C library hands over piece by piece.
struct WaylandGlobals {
  static void onGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                       std::uint32_t) {
    if (std::strcmp(interface, zxdg_importer_v2_interface.name) != 0) return;
    static_cast<WaylandParent*>(self)->importer_ = static_cast<zxdg_importer_v2*>(
        wl_registry_bind(registry, name, &zxdg_importer_v2_interface, 1));
  }
  static void onRemoved(void*, wl_registry*, std::uint32_t) {}
  static constexpr wl_registry_listener kListener{onGlobal, onRemoved};
};

WaylandParent::WaylandParent(std::string handle) : handle_(std::move(handle)) {
  if (!GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default())) handle_.clear();
}

WaylandParent::~WaylandParent() {
  if (imported_ != nullptr) zxdg_imported_v2_destroy(imported_);
  if (importer_ != nullptr) zxdg_importer_v2_destroy(importer_);
  if (queue_ != nullptr) wl_event_queue_destroy(queue_);
}

void WaylandParent::prepare(GtkWindow* window) {
  if (!isKnown()) return;
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
  // The toolkit does it before the window is placed; it knows the older version of the protocol.
  if (gdk_wayland_toplevel_set_transient_for_exported(GDK_TOPLEVEL(surface), handle_.c_str())) {
    return;
  }
  if (queue_ == nullptr) bindImporter();
}

void WaylandParent::bindImporter() {
  wl_display* connection = gdk_wayland_display_get_wl_display(gdk_display_get_default());
  // A separate queue, so that waiting for the list does not run the toolkit's events.
  queue_ = wl_display_create_queue(connection);
  auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(connection));
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue_);
  wl_registry* registry = wl_display_get_registry(wrapper);
  wl_proxy_wrapper_destroy(wrapper);
  wl_registry_add_listener(registry, &WaylandGlobals::kListener, this);
  wl_display_roundtrip_queue(connection, queue_);
  wl_registry_destroy(registry);
  if (importer_ != nullptr) {
    imported_ = zxdg_importer_v2_import_toplevel(importer_, handle_.c_str());
  }
}

void WaylandParent::settle(GtkWindow* window) const {
  if (imported_ == nullptr) return;
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
  zxdg_imported_v2_set_parent_of(imported_, gdk_wayland_surface_get_wl_surface(surface));
}

}  // namespace zovk::helper
