#include "PixelWatch.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <pthread.h>
#include <sys/socket.h>

namespace zovk {
namespace {

constexpr std::chrono::microseconds kBetweenLooks{500};
constexpr unsigned long kColour = 0xffffff;

void* openDisplay() {
  Display* const display = XOpenDisplay(nullptr);
  if (display != nullptr) return display;
  std::fprintf(stderr, "run it with scripts/with-display\n");
  std::exit(1);
}

}  // namespace

PixelWatch::PixelWatch(int x, int y)
    : x_(x), y_(y), own_(openDisplay()), thread_([this] { look(); }) {}

PixelWatch::~PixelWatch() {
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
  }
  changed_.notify_all();
  thread_.join();
  XCloseDisplay(static_cast<Display*>(own_));
}

void PixelWatch::expect(unsigned long colour) {
  {
    const std::lock_guard lock(mutex_);
    wanted_ = colour;
    seen_.reset();
  }
  changed_.notify_all();
}

std::optional<PixelWatch::Clock::time_point> PixelWatch::seen() const {
  const std::lock_guard lock(mutex_);
  return seen_;
}

void PixelWatch::follow() {
  {
    const std::lock_guard lock(mutex_);
    following_ = true;
    followed_.clear();
  }
  changed_.notify_all();
}

std::vector<unsigned long> PixelWatch::followed() {
  const std::lock_guard lock(mutex_);
  following_ = false;
  return std::exchange(followed_, {});
}

unsigned long PixelWatch::colour() const {
  return read(own_, x_, y_);
}

double PixelWatch::processorSeconds() const {
  clockid_t clock{};
  timespec time{};
  if (pthread_getcpuclockid(thread_.native_handle(), &clock) != 0) return 0;
  if (clock_gettime(clock, &time) != 0) return 0;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

pid_t PixelWatch::screenProcess() const {
  ucred server{};
  socklen_t size = sizeof server;
  const int socket = ConnectionNumber(static_cast<Display*>(own_));
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &server, &size) == 0 ? server.pid : 0;
}

unsigned long PixelWatch::read(void* connection, int x, int y) {
  auto* const display = static_cast<Display*>(connection);
  // With what stands in front of the root window, as screenshots have it.
  XImage* const image =
      XGetImage(display, DefaultRootWindow(display), x, y, 1, 1, AllPlanes, ZPixmap);
  if (image == nullptr) return 0;
  const unsigned long pixel = XGetPixel(image, 0, 0) & kColour;
  XDestroyImage(image);
  return pixel;
}

void PixelWatch::look() {
  void* const display = openDisplay();
  std::unique_lock lock(mutex_);
  while (!over_) {
    if (!wanted_ && !following_) {
      changed_.wait(lock);
      continue;
    }
    lock.unlock();
    const unsigned long now = read(display, x_, y_);
    const auto when = Clock::now();
    lock.lock();
    if (following_ && (followed_.empty() || followed_.back() != now)) followed_.push_back(now);
    if (wanted_ == now) {
      seen_ = when;
      wanted_.reset();
    } else {
      changed_.wait_for(lock, kBetweenLooks);
    }
  }
  XCloseDisplay(static_cast<Display*>(display));
}

}  // namespace zovk
