#include "ScreenWindows.h"

#include <memory>
#include <stdexcept>

#include <X11/Xlib.h>

namespace zovk {
namespace {

bool isSeen(Display* display, Window window) {
  XWindowAttributes facts;
  return XGetWindowAttributes(display, window, &facts) != 0 && facts.map_state == IsViewable &&
         facts.c_class == InputOutput && facts.width > 1 && facts.height > 1;
}

int ignoreError(Display*, XErrorEvent*) {
  return 0;  // windows may go while they are counted
}

}  // namespace

int windowsOnScreen() {
  const std::unique_ptr<Display, decltype(&XCloseDisplay)> display(XOpenDisplay(nullptr),
                                                                   &XCloseDisplay);
  if (!display) throw std::runtime_error("no X11 display");
  const auto previous = XSetErrorHandler(ignoreError);
  Window root = 0;
  Window above = 0;
  Window* children = nullptr;
  unsigned int count = 0;
  XQueryTree(display.get(), DefaultRootWindow(display.get()), &root, &above, &children, &count);
  int seen = 0;
  for (unsigned int i = 0; i < count; ++i) seen += isSeen(display.get(), children[i]) ? 1 : 0;
  if (children != nullptr) XFree(children);
  XSetErrorHandler(previous);
  return seen;
}

}  // namespace zovk
