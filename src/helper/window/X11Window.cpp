#include "helper/window/X11Window.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/x11/gdkx.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {
namespace {

struct XFreeData {
  void operator()(unsigned char* data) const { XFree(data); }
};

/// The value of a window's property.
struct Property {
  std::unique_ptr<unsigned char, XFreeData> data;
  unsigned long count = 0;
  int format = 0;

  std::optional<unsigned long> number() const {
    if (count != 1 || format != 32) return std::nullopt;
    return *reinterpret_cast<unsigned long*>(data.get());
  }
};

/// A window's place in the tree of all windows.
struct Kin {
  Window root = None;
  Window parent = None;
  std::vector<Window> children;  // from the lowest to the highest
};

constexpr long kLongestProperty = 1024;  // in units of four bytes

Display* connectionOf(GdkDisplay* display) {
  return gdk_x11_display_get_xdisplay(display);
}

Atom atom(GdkDisplay* display, const char* name) {
  return gdk_x11_get_xatom_by_name_for_display(display, name);
}

Property propertyOf(GdkDisplay* display, Window window, const char* name, Atom wanted) {
  const X11ErrorTrap trap(display);
  Property result;
  Atom type = None;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  const int status =
      XGetWindowProperty(connectionOf(display), window, atom(display, name), 0, kLongestProperty,
                         False, wanted, &type, &result.format, &result.count, &left, &data);
  if (status != Success || type != wanted) result.count = 0;
  result.data.reset(status == Success ? data : nullptr);
  return result;
}

Kin kinOf(Display* connection, Window window) {
  Kin kin;
  Window* children = nullptr;
  unsigned int count = 0;
  if (XQueryTree(connection, window, &kin.root, &kin.parent, &children, &count) == 0) return {};
  kin.children.assign(children, children + count);
  if (children != nullptr) XFree(children);
  return kin;
}

/// Returns the window itself, or the frame that a window manager put around it.
Window outermost(Display* connection, Window window) {
  for (Kin kin = kinOf(connection, window); kin.parent != None && kin.parent != kin.root;
       kin = kinOf(connection, window)) {
    window = kin.parent;
  }
  return window;
}

}  // namespace

GdkDisplay* x11Display() {
  GdkDisplay* display = gdk_display_get_default();
  return GDK_IS_X11_DISPLAY(display) ? display : nullptr;
}

X11ErrorTrap::X11ErrorTrap(GdkDisplay* display) : display_(display) {
  gdk_x11_display_error_trap_push(display_);
}

X11ErrorTrap::~X11ErrorTrap() {
  gdk_x11_display_error_trap_pop_ignored(display_);
}

bool x11HasWindowManager(GdkDisplay* display) {
  const Window root = gdk_x11_display_get_xrootwindow(display);
  const auto told = propertyOf(display, root, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW).number();
  if (!told) return false;
  // A window manager that died leaves the property behind; the window in it is then gone.
  return propertyOf(display, *told, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW).number() == told;
}

X11Id x11ActiveWindow(GdkDisplay* display) {
  const Window root = gdk_x11_display_get_xrootwindow(display);
  return propertyOf(display, root, "_NET_ACTIVE_WINDOW", XA_WINDOW).number().value_or(None);
}

int x11Scale(GdkDisplay* display) {
  const auto monitor = itemOf<GdkMonitor>(gdk_display_get_monitors(display), 0);
  return monitor ? gdk_monitor_get_scale_factor(monitor.get()) : 1;
}

Frame X11Window::frame() const {
  const X11ErrorTrap trap(display_);
  Display* connection = connectionOf(display_);
  XWindowAttributes facts{};
  if (XGetWindowAttributes(connection, id_, &facts) == 0) return {};
  Frame frame{0, 0, facts.width, facts.height};
  Window child = None;
  XTranslateCoordinates(connection, id_, facts.root, 0, 0, &frame.x, &frame.y, &child);
  return frame;
}

Frame X11Window::logicalFrame() const {
  const Frame pixels = frame();
  const int scale = x11Scale(display_);
  return {pixels.x / scale, pixels.y / scale, pixels.width / scale, pixels.height / scale};
}

bool X11Window::isViewable() const {
  const X11ErrorTrap trap(display_);
  XWindowAttributes facts{};
  return XGetWindowAttributes(connectionOf(display_), id_, &facts) != 0 &&
         facts.map_state == IsViewable;
}

bool X11Window::isBelow(X11Id other) const {
  const X11ErrorTrap trap(display_);
  Display* connection = connectionOf(display_);
  const Window own = outermost(connection, id_);
  const Window others = outermost(connection, other);
  const auto all = kinOf(connection, gdk_x11_display_get_xrootwindow(display_)).children;
  const auto found = std::find(all.begin(), all.end(), own);
  return std::find(found, all.end(), others) != all.end() && own != others;
}

void X11Window::raise() const {
  // Window managers get the requests of the windows that they manage, and may ignore them.
  setUnmanaged(true);
  const X11ErrorTrap trap(display_);
  XRaiseWindow(connectionOf(display_), id_);
  setUnmanaged(false);
}

std::optional<unsigned long> X11Window::cardinal(const char* property) const {
  return propertyOf(display_, id_, property, XA_CARDINAL).number();
}

std::optional<unsigned long> X11Window::workSpace() const {
  return cardinal("_NET_WM_DESKTOP");
}

std::string X11Window::title() const {
  const Property told = propertyOf(display_, id_, "_NET_WM_NAME", atom(display_, "UTF8_STRING"));
  if (told.count == 0 || told.format != 8) return {};
  std::string title(reinterpret_cast<const char*>(told.data.get()), told.count);
  return g_utf8_validate_len(title.data(), title.size(), nullptr) == TRUE ? title : std::string();
}

void X11Window::watch() const {
  const X11ErrorTrap trap(display_);
  XSelectInput(connectionOf(display_), id_,
               StructureNotifyMask | PropertyChangeMask | FocusChangeMask);
}

void X11Window::moveResize(const Frame& frame) const {
  const X11ErrorTrap trap(display_);
  XMoveResizeWindow(connectionOf(display_), id_, frame.x, frame.y,
                    static_cast<unsigned int>(std::max(1, frame.width)),
                    static_cast<unsigned int>(std::max(1, frame.height)));
}

void X11Window::setTransientFor(X11Id other) const {
  const X11ErrorTrap trap(display_);
  XSetTransientForHint(connectionOf(display_), id_, other);
}

void X11Window::endTransience() const {
  const X11ErrorTrap trap(display_);
  XDeleteProperty(connectionOf(display_), id_, XA_WM_TRANSIENT_FOR);
}

void X11Window::setDialog() const {
  const X11ErrorTrap trap(display_);
  const Atom dialog = atom(display_, "_NET_WM_WINDOW_TYPE_DIALOG");
  XChangeProperty(connectionOf(display_), id_, atom(display_, "_NET_WM_WINDOW_TYPE"), XA_ATOM, 32,
                  PropModeReplace, reinterpret_cast<const unsigned char*>(&dialog), 1);
}

void X11Window::setUnmanaged(bool unmanaged) const {
  const X11ErrorTrap trap(display_);
  XSetWindowAttributes wishes{};
  wishes.override_redirect = unmanaged ? True : False;
  XChangeWindowAttributes(connectionOf(display_), id_, CWOverrideRedirect, &wishes);
}

void X11Window::sendRequest(const char* type, long first, long second) const {
  const X11ErrorTrap trap(display_);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = id_;
  event.xclient.message_type = atom(display_, type);
  event.xclient.format = 32;
  event.xclient.data.l[0] = first;
  event.xclient.data.l[1] = second;
  XSendEvent(connectionOf(display_), gdk_x11_display_get_xrootwindow(display_), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

void X11Window::askForWorkSpace(unsigned long number) const {
  constexpr long kProgram = 1;
  sendRequest("_NET_WM_DESKTOP", static_cast<long>(number), kProgram);
}

void X11Window::askToBeActive() const {
  constexpr long kProgram = 1;
  sendRequest("_NET_ACTIVE_WINDOW", kProgram,
              static_cast<long>(gdk_x11_display_get_user_time(display_)));
}

void X11Window::takeKeyboard() const {
  const X11ErrorTrap trap(display_);
  XSetInputFocus(connectionOf(display_), id_, RevertToParent, CurrentTime);
}

std::optional<X11Window> x11WindowOf(GtkWindow* window) {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window));
  if (!GDK_IS_X11_SURFACE(surface)) return std::nullopt;
  return X11Window(gtk_widget_get_display(GTK_WIDGET(window)), gdk_x11_surface_get_xid(surface));
}

}  // namespace zovk::helper
