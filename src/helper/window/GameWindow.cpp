#include "helper/window/GameWindow.h"

#include <utility>

#include <X11/Xlib.h>
#include <gdk/x11/gdkx.h>

#include "helper/GObjectPtr.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

Atom atom(GdkDisplay* display, const char* name) {
  return gdk_x11_get_xatom_by_name_for_display(display, name);
}

Window keyboardOwner(GdkDisplay* display) {
  Window owner = None;
  int revert = 0;
  XGetInputFocus(gdk_x11_display_get_xdisplay(display), &owner, &revert);
  return owner;
}

}  // namespace

GameWindow::GameWindow(X11Id id, const std::string& handle, const Frame& size, EventSink events,
                       Listener listener)
    : events_(std::move(events)),
      listener_(std::move(listener)),
      display_(x11Display()),
      parent_(handle),
      toldSize_(size) {
  if (id == 0 || display_ == nullptr) return;
  window_.emplace(display_, id);
  watch();
}

GameWindow::~GameWindow() {
  if (handler_ != 0) g_signal_handler_disconnect(display_, handler_);
}

Frame GameWindow::frame() const {
  return window_ ? window_->logicalFrame() : toldSize_;
}

std::optional<bool> GameWindow::hasKeyboard() const {
  return window_ ? isActive() : toldKeyboard_;
}

void GameWindow::setSize(const Frame& size) {
  toldSize_ = size;
  if (!window_) listener_.moved();
}

bool GameWindow::isActive() const {
  return x11HasWindowManager(display_) ? x11ActiveWindow(display_) == window_->id()
                                       : keyboardOwner(display_) == window_->id();
}

void GameWindow::activate() const {
  if (!window_) return;
  window_->askToBeActive();
  window_->takeKeyboard();
}

void GameWindow::watch() {
  const X11ErrorTrap trap(display_);
  Display* connection = gdk_x11_display_get_xdisplay(display_);
  const Window root = gdk_x11_display_get_xrootwindow(display_);
  XWindowAttributes attributes{};
  XGetWindowAttributes(connection, root, &attributes);
  XSelectInput(connection, root, attributes.your_event_mask | PropertyChangeMask);
  window_->watch();
  handler_ = g_signal_connect(display_, "xevent", G_CALLBACK(onXEvent), this);
}

void GameWindow::onRootProperty(unsigned long changed) const {
  // If two changes are read at once, the last one is read twice; the game then gets two events.
  if (changed == atom(display_, "_NET_ACTIVE_WINDOW") && isActive()) {
    events_({{member::kType, event::kWindowOther}});
  }
}

void GameWindow::onWindowEvent(const void* received) {
  const auto& event = *static_cast<const XEvent*>(received);
  switch (event.type) {
    case ConfigureNotify:
    case ReparentNotify:
      return listener_.moved();
    case UnmapNotify:
      return listener_.minimised();
    case MapNotify:
      return listener_.restored();
    case PropertyNotify:
      if (event.xproperty.atom == atom(display_, "_NET_WM_DESKTOP")) listener_.moved();
      return;
    case FocusIn:
      // A window manager reports it by a property, after which it is settled.
      if (!x11HasWindowManager(display_)) events_({{member::kType, event::kWindowOther}});
      return;
    default:
      return;
  }
}

gboolean GameWindow::onXEvent(GdkDisplay* display, void* event, gpointer self) {
  const auto* received = static_cast<XEvent*>(event);
  auto* game = static_cast<GameWindow*>(self);
  if (received->xany.window == game->window_->id()) {
    game->onWindowEvent(event);
  } else if (received->type == PropertyNotify &&
             received->xproperty.window == gdk_x11_display_get_xrootwindow(display)) {
    game->onRootProperty(received->xproperty.atom);
  }
  return GDK_EVENT_PROPAGATE;
}

}  // namespace zovk::helper
