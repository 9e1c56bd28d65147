#include "hostile/HostileScreen.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include <malloc.h>

#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

constexpr std::chrono::milliseconds kFrame(16);
constexpr std::chrono::milliseconds kPatience(10'000);

/// Of this thread: what other programs do on the machine does not count.
std::chrono::duration<double> processorTime() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

}  // namespace

void HostileScreen::start() {
  bundle().write();
  platform_ = makeDefaultPlatform(settings());
  ASSERT_TRUE(ZOVKPopupHost::setUp(platform_));
}

void HostileScreen::playFrame() {
  const auto end = std::chrono::steady_clock::now() + kFrame;
  const Seconds before = processorTime();
  ZOVKPopupHost::pump();
  longestPump_ = std::max(longestPump_, processorTime() - before);
  const auto left =
      std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
  if (left.count() > 0) poll(nullptr, 0, static_cast<int>(left.count()));
}

bool HostileScreen::playUntil(const std::function<bool()>& done, std::chrono::milliseconds bound) {
  const auto end = std::chrono::steady_clock::now() + bound;
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    playFrame();
  }
  return true;
}

void HostileScreen::settle() {
  bool done = false;
  screen().sync([&done](bool) { done = true; });
  EXPECT_TRUE(playUntil([&done] { return done; }, kPatience)) << "the helper answers no more";
}

std::optional<HostileScreen::Seconds> HostileScreen::pressTheCross() {
  const std::size_t before = answers().size();
  screen().viewFrame("crossBtn");
  settle();
  if (answers().size() > before) return std::nullopt;
  const auto cross = screen().viewFrame("crossBtn");
  if (!cross || !cross->visible) {
    ADD_FAILURE() << "no cross on the screen";
    return std::nullopt;
  }
  const Rect& frame = cross->frame;
  const std::string move = "xdotool mousemove " + std::to_string(int(frame.x + frame.width / 2)) +
                           " " + std::to_string(int(frame.y + frame.height / 2)) + " click 1";
  EXPECT_EQ(std::system(move.c_str()), 0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(playUntil([&] { return answers().size() > before; }, kPatience)) << "no answer";
  return std::chrono::steady_clock::now() - start;
}

double HostileScreen::megabytes() {
  malloc_trim(0);
  return writtenMegabytes(getpid());
}

HelperInspector& HostileScreen::screen() {
  return dynamic_cast<HelperInspector&>(platform_->interfaces().userInterface);
}

}  // namespace zovk
