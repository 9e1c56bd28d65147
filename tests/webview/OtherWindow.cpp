#include "OtherWindow.h"

#include <stdexcept>

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace zovk {
namespace {

Display* asDisplay(void* display) {
  return static_cast<Display*>(display);
}

Window transientFor(Display* display, Window child) {
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, child, XA_WM_TRANSIENT_FOR, 0, 1, False, XA_WINDOW, &type, &format,
                     &count, &left, &data);
  const Window window = count == 1 ? *reinterpret_cast<Window*>(data) : 0;
  if (data != nullptr) XFree(data);
  return window;
}

Window transientBelow(Display* display, Window parent, Window wanted) {
  Window root = 0;
  Window above = 0;
  Window* children = nullptr;
  unsigned int count = 0;
  if (XQueryTree(display, parent, &root, &above, &children, &count) == 0) return 0;
  Window found = 0;
  for (unsigned int i = 0; i < count && found == 0; ++i) {
    found = transientFor(display, children[i]) == wanted
                ? children[i]
                : transientBelow(display, children[i], wanted);
  }
  if (children != nullptr) XFree(children);
  return found;
}

}  // namespace

OtherWindow::OtherWindow() : display_(XOpenDisplay(nullptr)) {
  Display* display = asDisplay(display_);
  if (display == nullptr) throw std::runtime_error("no X11 display");
  window_ = XCreateSimpleWindow(display, DefaultRootWindow(display), 500, 50, 600, 400, 0, 0, 0);
  XSelectInput(display, window_, StructureNotifyMask | FocusChangeMask);
  XMapWindow(display, window_);
  awaitFocus(true);
}

OtherWindow::~OtherWindow() {
  XCloseDisplay(asDisplay(display_));
}

void OtherWindow::activate() {
  Display* display = asDisplay(display_);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window_;
  event.xclient.message_type = XInternAtom(display, "_NET_ACTIVE_WINDOW", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = 2;  // as a task bar asks
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
  XFlush(display);
}

void OtherWindow::awaitFocus(bool focused) {
  XEvent event{};
  while (event.type != (focused ? FocusIn : FocusOut)) XNextEvent(asDisplay(display_), &event);
}

std::uint64_t OtherWindow::transient() const {
  Display* display = asDisplay(display_);
  return transientBelow(display, DefaultRootWindow(display), window_);
}

void OtherWindow::watchTransient() {
  const Window window = transient();
  if (window == 0) throw std::runtime_error("no window stands before this one");
  Display* display = asDisplay(display_);
  XSelectInput(display, window, StructureNotifyMask);
  XSync(display, True);
}

bool OtherWindow::getsFocusAfterTransientLeft() {
  bool left = false;
  XEvent event{};
  while (event.type != FocusIn) {
    XNextEvent(asDisplay(display_), &event);
    left = left || (event.type == UnmapNotify && event.xunmap.window != window_);
  }
  return left;
}

}  // namespace zovk
