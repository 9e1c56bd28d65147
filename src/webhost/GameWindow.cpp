#include "webhost/GameWindow.h"

#include <array>
#include <utility>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <gdk/x11/gdkx.h>

namespace zovk {
namespace {

GdkDisplay* x11Display() {
  GdkDisplay* display = gdk_display_get_default();
  return GDK_IS_X11_DISPLAY(display) ? display : nullptr;
}

/// The X11 library ends the process on an error unless someone takes it; the game's window can go
/// at any time.
class ErrorTrap {
 public:
  explicit ErrorTrap(GdkDisplay* display) : display_(display) {
    gdk_x11_display_error_trap_push(display_);
  }
  ~ErrorTrap() { gdk_x11_display_error_trap_pop_ignored(display_); }
  ErrorTrap(const ErrorTrap&) = delete;
  ErrorTrap& operator=(const ErrorTrap&) = delete;

 private:
  GdkDisplay* display_;
};

Window surfaceOf(GtkWindow* popup) {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(popup));
  return GDK_IS_X11_SURFACE(surface) ? gdk_x11_surface_get_xid(surface) : None;
}

Atom activeWindowAtom(GdkDisplay* display) {
  return gdk_x11_get_xatom_by_name_for_display(display, "_NET_ACTIVE_WINDOW");
}

Window activeWindow(GdkDisplay* display) {
  Display* connection = gdk_x11_display_get_xdisplay(display);
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(connection, gdk_x11_display_get_xrootwindow(display),
                     activeWindowAtom(display), 0, 1, False, XA_WINDOW, &type, &format, &count,
                     &left, &data);
  const Window window = count == 1 && format == 32 ? *reinterpret_cast<Window*>(data) : None;
  if (data != nullptr) XFree(data);
  return window;
}

/// Asks the window manager; where there is none, nothing else hears it.
void requestActive(GdkDisplay* display, Window window) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = activeWindowAtom(display);
  event.xclient.format = 32;
  event.xclient.data.l[0] = 1;  // the request comes from a program
  event.xclient.data.l[1] = static_cast<long>(gdk_x11_display_get_user_time(display));
  XSendEvent(gdk_x11_display_get_xdisplay(display), gdk_x11_display_get_xrootwindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

}  // namespace

GameWindow::GameWindow(unsigned long id, EventSink events)
    : id_(id), events_(std::move(events)), display_(x11Display()) {
  if (id_ != 0 && display_ != nullptr) watchActiveWindow();
}

GameWindow::~GameWindow() {
  if (handler_ != 0) g_signal_handler_disconnect(display_, handler_);
}

void GameWindow::adopt(GtkWindow* popup) const {
  const Window window = surfaceOf(popup);
  if (display_ == nullptr || window == None) return;
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(popup));
  gdk_x11_surface_set_user_time(surface, gdk_x11_get_server_time(surface));
  if (id_ == 0) return;
  const ErrorTrap trap(display_);
  XSetTransientForHint(gdk_x11_display_get_xdisplay(display_), window, id_);
}

void GameWindow::move(GtkWindow* popup, int x, int y) {
  const Window window = surfaceOf(popup);
  if (window == None) return;
  GdkDisplay* display = gtk_widget_get_display(GTK_WIDGET(popup));
  const int scale = gtk_widget_get_scale_factor(GTK_WIDGET(popup));
  const ErrorTrap trap(display);
  XMoveWindow(gdk_x11_display_get_xdisplay(display), window, x * scale, y * scale);
}

void GameWindow::activate() const {
  if (id_ == 0 || display_ == nullptr) return;
  const ErrorTrap trap(display_);
  requestActive(display_, id_);
  XSetInputFocus(gdk_x11_display_get_xdisplay(display_), id_, RevertToParent, CurrentTime);
}

void GameWindow::watchActiveWindow() {
  const ErrorTrap trap(display_);
  Display* connection = gdk_x11_display_get_xdisplay(display_);
  const Window root = gdk_x11_display_get_xrootwindow(display_);
  XWindowAttributes attributes{};
  XGetWindowAttributes(connection, root, &attributes);
  XSelectInput(connection, root, attributes.your_event_mask | PropertyChangeMask);
  handler_ = g_signal_connect(display_, "xevent", G_CALLBACK(onXEvent), this);
}

bool GameWindow::isActive() const {
  return activeWindow(display_) == id_;
}

gboolean GameWindow::onXEvent(GdkDisplay* display, void* event, gpointer self) {
  const auto* change = static_cast<XEvent*>(event);
  if (change->type != PropertyNotify || change->xproperty.atom != activeWindowAtom(display)) {
    return GDK_EVENT_PROPAGATE;
  }
  // Two changes can be read as the last one, twice; then the game hears it twice.
  const auto* game = static_cast<GameWindow*>(self);
  if (game->isActive()) game->events_({{"type", "window.other"}});
  return GDK_EVENT_PROPAGATE;
}

}  // namespace zovk
