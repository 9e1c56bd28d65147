#include "helper/Screen.h"

#include "helper/GameWindow.h"

namespace zovk::helper {
namespace {

GdkRectangle geometryOf(GdkMonitor* monitor) {
  GdkRectangle geometry{};
  if (monitor != nullptr) gdk_monitor_get_geometry(monitor, &geometry);
  return geometry;
}

int sharedArea(const GdkRectangle& one, const GdkRectangle& other) {
  GdkRectangle both{};
  return gdk_rectangle_intersect(&one, &other, &both) == TRUE ? both.width * both.height : 0;
}

}  // namespace

GObjectPtr<GdkMonitor> monitorOf(const GameWindow& game) {
  const Frame frame = game.frame();
  const GdkRectangle window{frame.x, frame.y, frame.width, frame.height};
  GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
  GObjectPtr<GdkMonitor> best;
  for (guint i = 0; i < g_list_model_get_n_items(monitors); ++i) {
    auto monitor =
        GObjectPtr<GdkMonitor>::adopt(static_cast<GdkMonitor*>(g_list_model_get_item(monitors, i)));
    const bool better = !best || sharedArea(geometryOf(monitor.get()), window) >
                                     sharedArea(geometryOf(best.get()), window);
    if (better) best = std::move(monitor);
  }
  return best;
}

Frame monitorFrame(const GameWindow& game) {
  const GdkRectangle geometry = geometryOf(monitorOf(game).get());
  return {geometry.x, geometry.y, geometry.width, geometry.height};
}

Frame coveredFrame(const GameWindow& game) {
  const Frame frame = game.frame();
  return frame.width > 1 && frame.height > 1 ? frame : monitorFrame(game);
}

}  // namespace zovk::helper
