#include "helper/window/Screen.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "helper/window/GameWindow.h"

namespace zovk::helper {
namespace {

GdkRectangle geometryOf(GdkMonitor* monitor) {
  GdkRectangle geometry{};
  if (monitor != nullptr) gdk_monitor_get_geometry(monitor, &geometry);
  return geometry;
}

std::int64_t sharedArea(const GdkRectangle& one, const GdkRectangle& other) {
  GdkRectangle both{};
  if (gdk_rectangle_intersect(&one, &other, &both) == FALSE) return 0;
  return std::int64_t{both.width} * both.height;
}

/// Returns how far two lines that begin at these places are apart.
std::int64_t gap(int start, int length, int otherStart, int otherLength) {
  const std::int64_t before = otherStart - (std::int64_t{start} + length);
  const std::int64_t after = start - (std::int64_t{otherStart} + otherLength);
  return std::max({before, after, std::int64_t{0}});
}

/// The less, the nearer: first by the area that both share, then by the way between them.
std::pair<std::int64_t, std::int64_t> distance(const GdkRectangle& one, const GdkRectangle& other) {
  return {-sharedArea(one, other), gap(one.x, one.width, other.x, other.width) +
                                       gap(one.y, one.height, other.y, other.height)};
}

}  // namespace

GObjectPtr<GdkMonitor> monitorNear(const Frame& frame) {
  const GdkRectangle place{frame.x, frame.y, frame.width, frame.height};
  const bool isPlace = frame.width > 0 && frame.height > 0;
  GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
  GObjectPtr<GdkMonitor> best;
  for (guint i = 0; i < g_list_model_get_n_items(monitors); ++i) {
    auto monitor = itemOf<GdkMonitor>(monitors, i);
    const bool nearer =
        best && isPlace &&
        distance(geometryOf(monitor.get()), place) < distance(geometryOf(best.get()), place);
    if (!best || nearer) best = std::move(monitor);
  }
  return best;
}

bool isOnMonitor(const Frame& frame) {
  return sharedArea(geometryOf(monitorNear(frame).get()),
                    {frame.x, frame.y, frame.width, frame.height}) > 0;
}

GObjectPtr<GdkMonitor> monitorOf(const GameWindow& game) {
  return monitorNear(game.frame());
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
