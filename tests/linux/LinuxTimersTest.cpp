#include <gtest/gtest.h>

#include "PollWait.h"
#include "platform/linux/system/LinuxTimers.h"

namespace zovk {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBound{10'000};
constexpr std::chrono::hours kPlenty{1};

class LinuxTimersTest : public testing::Test {
 protected:
  LinuxMainQueue queue;
  LinuxTimers timers{queue};
};

TEST_F(LinuxTimersTest, TheDescriptorIsReadableWhenATimerIsDue) {
  int count = 0;
  const auto timer = timers.scheduleRepeating(std::chrono::hours(1), [] {});
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
  const auto sooner = timers.scheduleRepeating(milliseconds(5), [&] { ++count; });
  EXPECT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  queue.pump(std::chrono::microseconds(0));
  EXPECT_EQ(count, 1);
}

TEST_F(LinuxTimersTest, TheDescriptorIsNotReadableOnAccountOfATimerThatStopped) {
  const auto timer = timers.scheduleRepeating(milliseconds(1), [] {});
  ASSERT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  timer->invalidate();
  EXPECT_FALSE(waitReadable(queue.pollDescriptor(), milliseconds(20)));
}

TEST_F(LinuxTimersTest, NoTimerCallsBackAfterTheBudgetHasPassed) {
  int count = 0;
  const auto first = timers.scheduleRepeating(milliseconds(1), [&] { ++count; });
  const auto second = timers.scheduleRepeating(milliseconds(1), [&] { ++count; });
  waitReadable(-1, milliseconds(5));
  queue.pump(std::chrono::microseconds(0));
  EXPECT_EQ(count, 1);
}

TEST_F(LinuxTimersTest, TimersTakeTurnsEvenIfEachIsAlwaysDue) {
  int first = 0;
  int second = 0;
  const auto one = timers.scheduleRepeating(milliseconds(1), [&] { ++first; });
  const auto two = timers.scheduleRepeating(milliseconds(1), [&] { ++second; });
  for (int i = 0; i < 20; ++i) {
    waitReadable(-1, milliseconds(2));
    queue.pump(std::chrono::microseconds(0));
  }
  EXPECT_GT(first, 0);
  EXPECT_GT(second, 0);
}

TEST_F(LinuxTimersTest, ATimerMayOutliveItsTimers) {
  auto few = std::make_unique<LinuxTimers>(queue);
  int count = 0;
  const auto timer = few->scheduleRepeating(milliseconds(1), [&] { ++count; });
  few.reset();
  waitReadable(-1, milliseconds(5));
  queue.pump(kPlenty);
  EXPECT_EQ(count, 0);
  timer->invalidate();
}

}  // namespace
}  // namespace zovk
