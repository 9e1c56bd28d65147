// What the helper hears of the display's monitors. They are those of the display and one of the
// test's own.
#include <memory>

#include "ToolkitFixture.h"
#include "helper/window/MonitorsWatch.h"
#include "helper/window/SurfaceMonitor.h"
#include "helper/window/X11Window.h"

namespace zovk::helper {
namespace {

class WatchedMonitors : public ToolkitFixture {
 protected:
  WatchedMonitors()
      : display_(gdk_display_get_default()),
        monitors_(gdk_display_get_monitors(display_)),
        added_(GObjectPtr<GdkMonitor>::adopt(
            GDK_MONITOR(g_object_new(GDK_TYPE_MONITOR, "display", display_, nullptr)))),
        watch_(std::make_unique<MonitorsWatch>([this] { ++heard_; })) {}

  void plugIn() { g_list_store_append(G_LIST_STORE(monitors_), added_.get()); }
  void unplug() {
    g_list_store_remove(G_LIST_STORE(monitors_), g_list_model_get_n_items(monitors_) - 1);
  }
  static void resize(GdkMonitor* monitor) { g_object_notify(G_OBJECT(monitor), "geometry"); }
  /// Returns how often the watch reported since the last call.
  int heard() { return std::exchange(heard_, 0); }

  GdkDisplay* display_;
  GListModel* monitors_;
  GObjectPtr<GdkMonitor> added_;
  int heard_ = 0;
  std::unique_ptr<MonitorsWatch> watch_;
};

TEST_F(WatchedMonitors, AreHeardOfWhenTheyChange) {
  const auto first = itemOf<GdkMonitor>(monitors_, 0);
  EXPECT_EQ(heard(), 0);
  resize(first.get());
  EXPECT_EQ(heard(), 1);
}

TEST_F(WatchedMonitors, AreHeardOfWhenTheyComeAndGo) {
  plugIn();
  EXPECT_EQ(heard(), 1);
  unplug();
  EXPECT_EQ(heard(), 1);
}

TEST_F(WatchedMonitors, AreFollowedFromWhenTheyComeUntilTheyGo) {
  resize(added_.get());
  EXPECT_EQ(heard(), 0);
  plugIn();
  heard();
  resize(added_.get());
  EXPECT_EQ(heard(), 1);
  const auto first = itemOf<GdkMonitor>(monitors_, 0);
  resize(first.get());
  EXPECT_EQ(heard(), 1) << "once, however often others come";
  unplug();
  heard();
  resize(added_.get());
  EXPECT_EQ(heard(), 0);
}

TEST_F(WatchedMonitors, AreNotHeardOfAfterTheWatch) {
  watch_.reset();
  resize(itemOf<GdkMonitor>(monitors_, 0).get());
  plugIn();
  unplug();
  EXPECT_EQ(heard(), 0);
}

/// A window that is not shown, so that it stands where the test puts it.
class MonitorOfAWindow : public ToolkitFixture {
 protected:
  MonitorOfAWindow() : window_(GTK_WINDOW(gtk_window_new())), monitor_(window_) {
    gtk_widget_realize(GTK_WIDGET(window_));
    surface_ = gtk_native_get_surface(GTK_NATIVE(window_));
    const auto onEnter =
        +[](GdkSurface*, GdkMonitor*, gpointer count) { ++*static_cast<int*>(count); };
    g_signal_connect(surface_, "enter-monitor", G_CALLBACK(onEnter), &entered_);
    x11WindowOf(window_)->setUnmanaged(true);  // no window manager answers for it
    monitor_.start();
  }
  ~MonitorOfAWindow() override {
    monitor_.stop();
    gtk_window_destroy(window_);
  }

  void put(int x, int y) { x11WindowOf(window_)->moveResize({x, y, 100, 100}); }
  void leave() {
    const auto any = itemOf<GdkMonitor>(gdk_display_get_monitors(gdk_display_get_default()), 0);
    g_signal_emit_by_name(surface_, "leave-monitor", any.get());
  }
  /// Returns how often a monitor was reported since the last call.
  int entered() { return std::exchange(entered_, 0); }

  GtkWindow* window_;
  SurfaceMonitor monitor_;
  GdkSurface* surface_ = nullptr;
  int entered_ = 0;
};

TEST_F(MonitorOfAWindow, IsReportedOnceWhereThereIsNone) {
  put(-5000, -5000);
  monitor_.look();
  EXPECT_EQ(entered(), 1);
  monitor_.look();
  EXPECT_EQ(entered(), 0);
}

TEST_F(MonitorOfAWindow, IsNotReportedWhereTheDisplayDoesIt) {
  put(10, 10);
  monitor_.look();
  leave();
  EXPECT_EQ(entered(), 0);
}

TEST_F(MonitorOfAWindow, IsReportedAgainEachTimeTheWindowLeavesOne) {
  put(-5000, -5000);
  leave();
  EXPECT_EQ(entered(), 1);
  leave();
  EXPECT_EQ(entered(), 1);
}

TEST_F(MonitorOfAWindow, IsReportedUntilTheWatchStopsAndAgainAfterItStarts) {
  put(-5000, -5000);
  monitor_.look();
  entered();
  monitor_.stop();
  leave();
  monitor_.look();
  EXPECT_EQ(entered(), 0);
  monitor_.start();
  monitor_.look();
  EXPECT_EQ(entered(), 1);
  leave();
  EXPECT_EQ(entered(), 1) << "watched once";
}

}  // namespace
}  // namespace zovk::helper
