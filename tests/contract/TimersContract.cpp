#include <cmath>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "Backend.h"

namespace zovk {
namespace {

using std::chrono::milliseconds;

class TimersContract : public testing::Test {
 protected:
  std::shared_ptr<Timer> schedule(milliseconds interval, std::function<void()> callback) {
    return loop.timers().scheduleRepeating(interval, std::move(callback));
  }
  void advanceUntil(const std::function<bool()>& done) {
    for (int i = 0; i < 10'000 && !done(); ++i) loop.advance(milliseconds(1));
    ASSERT_TRUE(done());
  }

  LoopBackend loop;
};

TEST_F(TimersContract, CallsBackAgainAndAgain) {
  int count = 0;
  const auto timer = schedule(milliseconds(5), [&] { ++count; });
  advanceUntil([&] { return count >= 3; });
  EXPECT_TRUE(timer->isValid());
}

TEST_F(TimersContract, DoesNotCallBackBeforeItsIntervalHasPassed) {
  const double start = loop.clock().systemUptime();
  std::optional<double> first;
  const auto timer = schedule(milliseconds(30), [&] {
    if (!first) first = loop.clock().systemUptime();
  });
  advanceUntil([&] { return first.has_value(); });
  EXPECT_GE(*first - start, 0.0299);
}

TEST_F(TimersContract, NeedsTheHostToRunIt) {
  int count = 0;
  const auto timer = schedule(milliseconds(1), [&] { ++count; });
  loop.skip(milliseconds(5));
  EXPECT_EQ(count, 0);
  loop.run();
  EXPECT_GE(count, 1);
}

TEST_F(TimersContract, OneCallbackStandsForAllTurnsThatWereMissed) {
  constexpr double kInterval = 0.2;
  int count = 0;
  const double start = loop.clock().systemUptime();
  const auto timer = schedule(milliseconds(200), [&] { ++count; });
  loop.skip(milliseconds(500));
  const double before = loop.clock().systemUptime();
  loop.run();
  // Turns that came due while it ran are callbacks of their own.
  const double after = loop.clock().systemUptime();
  const int more = static_cast<int>(std::floor((after - start) / kInterval) -
                                    std::floor((before - start) / kInterval));
  EXPECT_GE(count, 1);
  EXPECT_LE(count, 1 + more);
}

TEST_F(TimersContract, InvalidateStopsItAndDropsTheCallback) {
  auto held = std::make_shared<int>(0);
  const auto timer = schedule(milliseconds(1), [held] { ++*held; });
  timer->invalidate();
  EXPECT_FALSE(timer->isValid());
  EXPECT_EQ(held.use_count(), 1);
  loop.advance(milliseconds(10));
  EXPECT_EQ(*held, 0);
  timer->invalidate();
}

TEST_F(TimersContract, DroppingItStopsItToo) {
  auto held = std::make_shared<int>(0);
  auto timer = schedule(milliseconds(1), [held] { ++*held; });
  timer.reset();
  EXPECT_EQ(held.use_count(), 1);
  loop.advance(milliseconds(10));
  EXPECT_EQ(*held, 0);
}

TEST_F(TimersContract, ACallbackThatInvalidatesItsTimerFinishes) {
  int count = 0;
  std::shared_ptr<Timer> timer;
  auto held = std::make_shared<int>(0);
  timer = schedule(milliseconds(1), [&count, &timer, held] {
    timer->invalidate();
    ++*held;
    ++count;
  });
  advanceUntil([&] { return count > 0; });
  loop.advance(milliseconds(10));
  EXPECT_EQ(*held, 1);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TimersContract, ACallbackMayDropItsTimer) {
  std::shared_ptr<Timer> timer;
  auto held = std::make_shared<int>(0);
  timer = schedule(milliseconds(1), [&timer, held] {
    timer.reset();
    ++*held;
  });
  advanceUntil([&] { return *held > 0; });
  loop.advance(milliseconds(10));
  EXPECT_EQ(*held, 1);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TimersContract, ATimerThatAnotherOneStopsWhenBothAreDueDoesNotCallBack) {
  int invalidated = 0;
  int dropped = 0;
  std::shared_ptr<Timer> second;
  std::shared_ptr<Timer> third;
  const auto first = schedule(milliseconds(1), [&] {
    second->invalidate();
    third.reset();
  });
  loop.skip(milliseconds(2));
  second = schedule(milliseconds(1), [&] { ++invalidated; });
  third = schedule(milliseconds(1), [&] { ++dropped; });
  loop.skip(milliseconds(5));
  loop.run();
  loop.advance(milliseconds(5));
  EXPECT_EQ(invalidated, 0);
  EXPECT_EQ(dropped, 0);
}

TEST_F(TimersContract, ACallbackMayMakeATimer) {
  int count = 0;
  std::shared_ptr<Timer> second;
  const auto first = schedule(milliseconds(1), [&] {
    if (!second) second = schedule(milliseconds(1), [&] { ++count; });
  });
  advanceUntil([&] { return count > 0; });
}

TEST_F(TimersContract, FireCallsBackNow) {
  int count = 0;
  const auto timer = schedule(std::chrono::hours(1), [&] { ++count; });
  timer->fire();
  timer->fire();
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(timer->isValid());
}

TEST_F(TimersContract, FireDoesNothingOnceItIsInvalid) {
  int count = 0;
  const auto timer = schedule(std::chrono::hours(1), [&] { ++count; });
  timer->invalidate();
  timer->fire();
  EXPECT_EQ(count, 0);
}

TEST_F(TimersContract, FireDoesNotMoveTheNextTurn) {
  const double start = loop.clock().systemUptime();
  bool firing = false;
  std::optional<double> turn;
  const auto timer = schedule(milliseconds(1000), [&] {
    if (!firing && !turn) turn = loop.clock().systemUptime();
  });
  loop.advance(milliseconds(800));
  firing = true;
  timer->fire();
  firing = false;
  advanceUntil([&] { return turn.has_value(); });
  // Moved by the call it would come at 1.8 or later.
  EXPECT_GE(*turn - start, 0.999);
  EXPECT_LT(*turn - start, 1.8);
}

TEST_F(TimersContract, AnIntervalOfNothingStillLetsTheHostGetOn) {
  int count = 0;
  const auto timer = schedule(milliseconds(0), [&] { ++count; });
  advanceUntil([&] { return count >= 2; });
}

TEST_F(TimersContract, NothingIsCalledBackAfterShutDown) {
  int count = 0;
  const auto timer = schedule(milliseconds(1), [&] { ++count; });
  loop.shutDown();
  loop.skip(milliseconds(5));
  loop.run();
  EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace zovk
