#include "webhost/WindowHost.h"

#include <utility>

#include "webhost/DesktopTheme.h"
#include "webhost/GameWindow.h"
#include "webhost/TabOrder.h"
#include "webhost/ViewStyle.h"

namespace zovk {
namespace {

/// How long the game waits for a paint that does not come, when the window is covered, say.
constexpr guint kPaintMilliseconds = 1000;

GObjectPtr<GdkMonitor> mainMonitor() {
  GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
  return GObjectPtr<GdkMonitor>::adopt(
      static_cast<GdkMonitor*>(g_list_model_get_item(monitors, 0)));
}

bool coversScreen(const Frame& frame) {
  const Frame screen = mainScreen();
  const bool empty = frame.width <= 0 || frame.height <= 0;
  return empty || (frame.width >= screen.width && frame.height >= screen.height);
}

}  // namespace

Frame mainScreen() {
  const GObjectPtr<GdkMonitor> monitor = mainMonitor();
  if (!monitor) return {};
  GdkRectangle geometry;
  gdk_monitor_get_geometry(monitor.get(), &geometry);
  return {geometry.x, geometry.y, geometry.width, geometry.height};
}

WindowHost::WindowHost(Id id, GtkWidget* root, const Frame& frame, EventSink events,
                       std::function<void()> painted)
    : id_(id),
      frame_(frame),
      events_(std::move(events)),
      painted_(std::move(painted)),
      window_(GTK_WINDOW(gtk_window_new())),
      progress_(root),
      escape_(window_),
      fullScreen_(coversScreen(frame)) {
  gtk_window_set_decorated(window_, FALSE);
  gtk_window_set_child(window_, progress_.widget());
  keepTabSteps(window_);
  markHighContrast(window_);
  const Frame size = fullScreen_ ? mainScreen() : frame;
  gtk_window_set_default_size(window_, size.width, size.height);
  // Where nothing blends windows, what is clear would show as black.
  if (gdk_display_is_composited(gtk_widget_get_display(widget()))) setBackground({0, 0, 0, 0});
}

WindowHost::~WindowHost() {
  hide();
  finishWaiting();
  gtk_window_set_child(window_, nullptr);
  gtk_window_destroy(window_);
}

void WindowHost::connectSignals() {
  g_signal_connect(window_, "close-request", G_CALLBACK(onCloseRequest), this);
  g_signal_connect(window_, "notify::is-active", G_CALLBACK(onActiveChanged), this);
  g_signal_connect(gtk_native_get_surface(GTK_NATIVE(window_)), "layout", G_CALLBACK(onLayout),
                   this);
  clock_ = GObjectPtr<GdkFrameClock>::retain(gtk_widget_get_frame_clock(widget()));
  g_signal_connect(clock_.get(), "after-paint", G_CALLBACK(onAfterPaint), this);
}

void WindowHost::disconnectSignals() {
  g_signal_handlers_disconnect_by_data(clock_.get(), this);
  g_signal_handlers_disconnect_by_data(gtk_native_get_surface(GTK_NATIVE(window_)), this);
  g_signal_handlers_disconnect_by_data(window_, this);
}

void WindowHost::setBackground(const GdkRGBA& color) {
  zovk::setBackground(widget(), color);
}

void WindowHost::show(const GameWindow& game) {
  if (!shown_) {
    // Not before: GTK fails on a window that is destroyed before it was ever shown.
    gtk_widget_realize(widget());
    connectSignals();
  }
  game.adopt(window_);
  if (fullScreen_) gtk_window_fullscreen(window_);
  shown_ = true;
  gtk_window_present(window_);
  if (!fullScreen_) place();
}

void WindowHost::hide() {
  if (!std::exchange(shown_, false)) return;
  disconnectSignals();
  gtk_widget_set_visible(widget(), FALSE);
}

void WindowHost::place() {
  // The toolkit has no say in where windows go; what it has queued must be out before.
  GameWindow::move(window_, frame_.x, frame_.y);
}

void WindowHost::whenPainted(std::function<void()> next) {
  if (!shown_) return next();
  Waiting& waiting = waiting_.emplace_back(Waiting{this, std::move(next), {}});
  waiting.deadline = SourceGuard(g_timeout_add(kPaintMilliseconds, onDeadline, &waiting));
  gtk_widget_queue_draw(widget());
}

void WindowHost::finishWaiting() {
  std::list<Waiting> done;
  done.swap(waiting_);
  for (const Waiting& waiting : done) waiting.next();
}

gboolean WindowHost::onDeadline(gpointer data) {
  auto* waiting = static_cast<Waiting*>(data);
  waiting->deadline.forget();
  waiting->window->finishWaiting();
  return G_SOURCE_REMOVE;
}

gboolean WindowHost::onCloseRequest(GtkWindow*, gpointer) {
  return TRUE;
}

void WindowHost::onActiveChanged(GObject* window, GParamSpec*, gpointer self) {
  const auto* host = static_cast<WindowHost*>(self);
  const bool active = gtk_window_is_active(GTK_WINDOW(window)) == TRUE;
  host->events_({{"type", "window.key"}, {"window", host->id_}, {"key", active}});
}

void WindowHost::onLayout(GdkSurface*, int width, int height, gpointer self) {
  auto* host = static_cast<WindowHost*>(self);
  if (host->width_ == width && host->height_ == height) return;
  host->width_ = width;
  host->height_ = height;
  host->events_({{"type", "window.size"},
                 {"window", host->id_},
                 {"width", width},
                 {"height", height},
                 {"safeArea", {0, 0, 0, 0}}});
}

void WindowHost::onAfterPaint(GdkFrameClock*, gpointer self) {
  auto* host = static_cast<WindowHost*>(self);
  host->painted_();
  host->finishWaiting();
}

}  // namespace zovk
