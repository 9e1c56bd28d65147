#include "helper/window/SurfaceMonitor.h"

#include <utility>

#include "helper/window/Screen.h"
#include "helper/window/X11Window.h"

namespace zovk::helper {

void SurfaceMonitor::start() {
  // Only X11 says where windows are; elsewhere the display reports the monitor, too.
  if (!x11WindowOf(window_)) return;
  surface_ = GObjectPtr<GdkSurface>::retain(gtk_native_get_surface(GTK_NATIVE(window_)));
  g_signal_connect(surface_.get(), "leave-monitor", G_CALLBACK(onLeft), this);
}

void SurfaceMonitor::stop() {
  if (surface_) g_signal_handlers_disconnect_by_data(surface_.get(), this);
  surface_ = {};
  reported_ = {};
}

void SurfaceMonitor::look() {
  if (!surface_) return;
  const Frame frame = x11WindowOf(window_)->logicalFrame();
  if (isOnMonitor(frame)) return;
  auto nearest = monitorNear(frame);
  if (!nearest || nearest.get() == reported_.get()) return;
  reported_ = std::move(nearest);
  g_signal_emit_by_name(surface_.get(), "enter-monitor", reported_.get());
}

void SurfaceMonitor::onLeft(GdkSurface*, GdkMonitor*, gpointer self) {
  auto* own = static_cast<SurfaceMonitor*>(self);
  own->reported_ = {};
  own->look();
}

}  // namespace zovk::helper
