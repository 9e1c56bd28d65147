#include "GameStandIn.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <stdexcept>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zovk {
namespace {

constexpr std::chrono::seconds kBound{20};
constexpr int kLookMilliseconds = 20;

Display* asDisplay(void* display) {
  return static_cast<Display*>(display);
}

Display* open(const std::string& name) {
  Display* display = XOpenDisplay(name.empty() ? nullptr : name.c_str());
  if (display == nullptr) throw std::runtime_error("no X11 display " + name);
  return display;
}

int ignoreError(Display*, XErrorEvent*) {
  return 0;  // windows of others may go while they are asked about
}

/// Looks whenever the server has something to tell, and a few times a second.
void awaitOn(Display* display, const char* what, const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + kBound;
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error(what);
    pollfd ready{ConnectionNumber(display), POLLIN, 0};
    ::poll(&ready, 1, kLookMilliseconds);
  }
}

Atom atom(Display* display, const char* name) {
  return XInternAtom(display, name, False);
}

std::string propertyBytes(Display* display, Window window, const char* name) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, window, atom(display, name), 0, 1024, False, AnyPropertyType, &type,
                     &format, &count, &left, &data);
  const std::size_t unit = format == 32 ? sizeof(long) : static_cast<std::size_t>(format) / 8;
  std::string bytes(data == nullptr ? "" : reinterpret_cast<char*>(data),
                    data == nullptr ? 0 : count * unit);
  if (data != nullptr) XFree(data);
  return bytes;
}

unsigned long number(Display* display, Window window, const char* name) {
  const std::string bytes = propertyBytes(display, window, name);
  return bytes.size() == sizeof(unsigned long)
             ? *reinterpret_cast<const unsigned long*>(bytes.data())
             : 0;
}

Place placeOf(Display* display, Window window) {
  XWindowAttributes facts{};
  if (XGetWindowAttributes(display, window, &facts) == 0) return {};
  Place place{0, 0, facts.width, facts.height};
  Window child = None;
  XTranslateCoordinates(display, window, facts.root, 0, 0, &place.x, &place.y, &child);
  return place;
}

Window transientBelow(Display* display, Window parent, Window wanted) {
  Window root = 0;
  Window above = 0;
  Window* children = nullptr;
  unsigned int count = 0;
  if (XQueryTree(display, parent, &root, &above, &children, &count) == 0) return 0;
  Window found = 0;
  for (unsigned int i = 0; i < count && found == 0; ++i) {
    found = number(display, children[i], "WM_TRANSIENT_FOR") == wanted
                ? children[i]
                : transientBelow(display, children[i], wanted);
  }
  if (children != nullptr) XFree(children);
  return found;
}

/// Announces a window manager, which gets the others' requests from now on.
void beManager(Display* display) {
  const Window root = DefaultRootWindow(display);
  const Window sign = XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0);
  for (const Window window : {root, sign}) {
    XChangeProperty(display, window, atom(display, "_NET_SUPPORTING_WM_CHECK"), XA_WINDOW, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(&sign), 1);
  }
  XSelectInput(display, root, SubstructureRedirectMask);
  XSync(display, False);
}

void place(Display* display, const XConfigureRequestEvent& wish) {
  XWindowChanges changes{wish.x, wish.y, wish.width, wish.height, 0, None, 0};
  constexpr unsigned int kPlaceOnly = CWX | CWY | CWWidth | CWHeight;
  XConfigureWindow(display, wish.window, static_cast<unsigned int>(wish.value_mask) & kPlaceOnly,
                   &changes);
}

}  // namespace

GameStandIn::GameStandIn(const Place& place, const std::string& name) : display_(open(name)) {
  XSetErrorHandler(ignoreError);
  Display* display = asDisplay(display_);
  window_ = XCreateSimpleWindow(display, DefaultRootWindow(display), place.x, place.y,
                                static_cast<unsigned int>(place.width),
                                static_cast<unsigned int>(place.height), 0, 0, 0);
  setTitle("The Game");
  XSizeHints hints{};
  hints.flags = USPosition | USSize;
  XSetWMNormalHints(display, window_, &hints);
  XSelectInput(display, window_, StructureNotifyMask | FocusChangeMask);
  XMapWindow(display, window_);
  awaitViewable(window_, true);
}

GameStandIn::~GameStandIn() {
  XCloseDisplay(asDisplay(display_));
}

void GameStandIn::setTitle(const std::string& title) {
  Display* display = asDisplay(display_);
  XChangeProperty(display, window_, atom(display, "_NET_WM_NAME"), atom(display, "UTF8_STRING"), 8,
                  PropModeReplace, reinterpret_cast<const unsigned char*>(title.data()),
                  static_cast<int>(title.size()));
  XSync(display, False);
}

void GameStandIn::move(const Place& place) {
  XMoveResizeWindow(asDisplay(display_), window_, place.x, place.y,
                    static_cast<unsigned int>(place.width),
                    static_cast<unsigned int>(place.height));
  XFlush(asDisplay(display_));
}

void GameStandIn::minimise() {
  Display* display = asDisplay(display_);
  XIconifyWindow(display, window_, DefaultScreen(display));
  XFlush(display);
}

void GameStandIn::setShown(bool shown) {
  Display* display = asDisplay(display_);
  if (shown) {
    XMapWindow(display, window_);
  } else {
    XUnmapWindow(display, window_);
  }
  XSync(display, False);
}

void GameStandIn::activate() {
  Display* display = asDisplay(display_);
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window_;
  event.xclient.message_type = atom(display, "_NET_ACTIVE_WINDOW");
  event.xclient.format = 32;
  event.xclient.data.l[0] = 2;  // as a task bar asks
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
  XFlush(display);
}

void GameStandIn::awaitFocus(bool focused) {
  Display* display = asDisplay(display_);
  awaitOn(display, focused ? "the game did not get the keyboard" : "the game kept the keyboard",
          [&] {
            Window owner = None;
            int revert = 0;
            XGetInputFocus(display, &owner, &revert);
            return (owner == window_) == focused;
          });
}

Place GameStandIn::place() const {
  return placeOf(asDisplay(display_), window_);
}

std::uint64_t GameStandIn::popup() const {
  Display* display = asDisplay(display_);
  return transientBelow(display, DefaultRootWindow(display), window_);
}

void GameStandIn::awaitPopup(std::uint64_t window) const {
  awaitOn(asDisplay(display_), "the window in front of the game did not become another",
          [&] { return popup() == window; });
}

void GameStandIn::awaitPlace(std::uint64_t window, const Place& wanted) const {
  Display* display = asDisplay(display_);
  try {
    awaitOn(display, "", [&] { return placeOf(display, window) == wanted; });
  } catch (const std::runtime_error&) {
    const Place last = placeOf(display, window);
    throw std::runtime_error("the window did not come to its place, but to " +
                             std::to_string(last.x) + "," + std::to_string(last.y) + " " +
                             std::to_string(last.width) + "x" + std::to_string(last.height));
  }
}

void GameStandIn::awaitViewable(std::uint64_t window, bool viewable) const {
  Display* display = asDisplay(display_);
  awaitOn(display, viewable ? "the window did not come up" : "the window stayed", [&] {
    XWindowAttributes facts{};
    const bool known = XGetWindowAttributes(display, window, &facts) != 0;
    return (known && facts.map_state == IsViewable) == viewable;
  });
}

void GameStandIn::awaitAbove(std::uint64_t window) const {
  Display* display = asDisplay(display_);
  awaitOn(display, "the window stayed below", [&] {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    const std::vector<Window> all(children, children + count);
    if (children != nullptr) XFree(children);
    const auto own = std::find(all.begin(), all.end(), window_);
    return std::find(own, all.end(), window) != all.end();
  });
}

bool GameStandIn::isOverrideRedirect(std::uint64_t window) const {
  XWindowAttributes facts{};
  XGetWindowAttributes(asDisplay(display_), window, &facts);
  return facts.override_redirect == True;
}

bool GameStandIn::isDialog(std::uint64_t window) const {
  Display* display = asDisplay(display_);
  return number(display, window, "_NET_WM_WINDOW_TYPE") ==
         atom(display, "_NET_WM_WINDOW_TYPE_DIALOG");
}

std::string GameStandIn::title(std::uint64_t window) const {
  return propertyBytes(asDisplay(display_), window, "_NET_WM_NAME");
}

BareScreen::BareScreen(const std::string& size) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  const std::string descriptor = std::to_string(ends[1]);
  std::string screen = size + "x24";
  std::vector<std::string> words{"Xvfb", "-displayfd", descriptor, "-screen", "0",
                                 screen, "-nolisten",  "tcp",      "-noreset"};
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const int error = posix_spawnp(&pid_, "Xvfb", nullptr, nullptr, arguments.data(), environ);
  close(ends[1]);
  std::string number;
  for (char c = 0; error == 0 && read(ends[0], &c, 1) == 1 && c != '\n';) number += c;
  close(ends[0]);
  if (number.empty()) throw std::runtime_error("no X server");
  name_ = ":" + number;
}

BareScreen::~BareScreen() {
  if (pid_ <= 0) return;
  kill(pid_, SIGTERM);
  waitpid(pid_, nullptr, 0);
}

std::vector<std::string> BareScreen::environment() const {
  return {"DISPLAY=" + name_, "XAUTHORITY", "WAYLAND_DISPLAY"};
}

WorkSpaces::WorkSpaces(const BareScreen& screen) : display_(open(screen.name())) {
  Display* display = asDisplay(display_);
  XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
  XSync(display, False);
}

WorkSpaces::~WorkSpaces() {
  XCloseDisplay(asDisplay(display_));
}

void WorkSpaces::put(std::uint64_t window, unsigned long workSpace) {
  Display* display = asDisplay(display_);
  XChangeProperty(display, window, atom(display, "_NET_WM_DESKTOP"), XA_CARDINAL, 32,
                  PropModeReplace, reinterpret_cast<const unsigned char*>(&workSpace), 1);
  XSync(display, False);
}

unsigned long WorkSpaces::awaitWish(std::uint64_t window) {
  Display* display = asDisplay(display_);
  XEvent event{};
  awaitOn(display, "nobody asked for a work space", [&] {
    return XCheckTypedEvent(display, ClientMessage, &event) == True &&
           event.xclient.window == window &&
           event.xclient.message_type == atom(display, "_NET_WM_DESKTOP");
  });
  return static_cast<unsigned long>(event.xclient.data.l[0]);
}

BlendingManager::BlendingManager() : display_(open({})) {
  Display* display = asDisplay(display_);
  const Window owner =
      XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
  const Atom name = atom(display, "_NET_WM_CM_S0");
  XSetSelectionOwner(display, name, owner, CurrentTime);
  if (XGetSelectionOwner(display, name) != owner) throw std::runtime_error("not the compositor");
}

BlendingManager::~BlendingManager() {
  XCloseDisplay(asDisplay(display_));
}

IdleManager::IdleManager(const BareScreen& screen) : display_(open(screen.name())) {
  beManager(asDisplay(display_));
}

IdleManager::~IdleManager() {
  XCloseDisplay(asDisplay(display_));
}

SimpleManager::SimpleManager(const BareScreen& screen, Habit habit)
    : display_(open(screen.name())), habit_(habit), stop_(eventfd(0, EFD_CLOEXEC)) {
  beManager(asDisplay(display_));
  thread_ = std::thread([this] { manage(); });
}

SimpleManager::~SimpleManager() {
  eventfd_write(stop_, 1);
  thread_.join();
  close(stop_);
  XCloseDisplay(asDisplay(display_));
}

void SimpleManager::show(std::uint64_t window) const {
  Display* display = asDisplay(display_);
  if (habit_ == Habit::kLowers) XLowerWindow(display, window);
  if (habit_ == Habit::kShifts) {
    const bool full =
        number(display, window, "_NET_WM_STATE") == atom(display, "_NET_WM_STATE_FULLSCREEN");
    const Place place = placeOf(display, window);
    const Place screen = placeOf(display, DefaultRootWindow(display));
    const Place given =
        full ? screen : Place{place.x + 32, place.y + 32, place.width, place.height};
    XMoveResizeWindow(display, window, given.x, given.y, static_cast<unsigned int>(given.width),
                      static_cast<unsigned int>(given.height));
  }
  XMapWindow(display, window);
  XSetInputFocus(display, window, RevertToParent, CurrentTime);
}

void SimpleManager::manage() {
  Display* display = asDisplay(display_);
  std::array<pollfd, 2> ready{{{ConnectionNumber(display), POLLIN, 0}, {stop_, POLLIN, 0}}};
  while (ready[1].revents == 0) {
    while (XPending(display) > 0) {
      XEvent event{};
      XNextEvent(display, &event);
      if (event.type == ConfigureRequest && habit_ != Habit::kShifts) {
        zovk::place(display, event.xconfigurerequest);
      }
      if (event.type == MapRequest) show(event.xmaprequest.window);
    }
    XFlush(display);
    ::poll(ready.data(), ready.size(), -1);
  }
}

}  // namespace zovk
