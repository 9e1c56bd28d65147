#include "helper/window/MonitorsWatch.h"

#include <utility>

namespace zovk::helper {

MonitorsWatch::MonitorsWatch(std::function<void()> changed)
    : changed_(std::move(changed)), monitors_(gdk_display_get_monitors(gdk_display_get_default())) {
  g_signal_connect(monitors_, "items-changed", G_CALLBACK(onListChanged), this);
  follow();
}

MonitorsWatch::~MonitorsWatch() {
  g_signal_handlers_disconnect_by_data(monitors_, this);
  unfollow();
}

void MonitorsWatch::follow() {
  for (guint i = 0; i < g_list_model_get_n_items(monitors_); ++i) {
    auto& monitor = followed_.emplace_back(itemOf<GdkMonitor>(monitors_, i));
    g_signal_connect(monitor.get(), "notify::geometry", G_CALLBACK(onGeometryChanged), this);
  }
}

void MonitorsWatch::unfollow() {
  for (const auto& monitor : followed_) g_signal_handlers_disconnect_by_data(monitor.get(), this);
  followed_.clear();
}

void MonitorsWatch::onListChanged(GListModel*, guint, guint, guint, gpointer self) {
  auto* watch = static_cast<MonitorsWatch*>(self);
  watch->unfollow();
  watch->follow();
  watch->changed_();
}

void MonitorsWatch::onGeometryChanged(GObject*, GParamSpec*, gpointer self) {
  static_cast<MonitorsWatch*>(self)->changed_();
}

}  // namespace zovk::helper
