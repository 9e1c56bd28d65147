#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryScheduler.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;

TEST(MemoryScheduler, RunsTasksInTheOrderInWhichTheyWereAdded) {
  MemoryScheduler scheduler;
  std::string ran;
  scheduler.async([&] { ran += "a"; });
  scheduler.async([&] { ran += "b"; });
  EXPECT_EQ(scheduler.pendingTaskCount(), 2u);
  EXPECT_EQ(ran, "");
  scheduler.runReady();
  EXPECT_EQ(ran, "ab");
  EXPECT_EQ(scheduler.pendingTaskCount(), 0u);
}

TEST(MemoryScheduler, RunsTasksThatTasksAdd) {
  MemoryScheduler scheduler;
  std::string ran;
  scheduler.async([&] {
    scheduler.async([&] { ran += "c"; });
    ran += "a";
  });
  scheduler.async([&] { ran += "b"; });
  scheduler.runReady();
  EXPECT_EQ(ran, "abc");
}

TEST(MemoryScheduler, DoesNotRunTasksInsideOfATask) {
  MemoryScheduler scheduler;
  std::string ran;
  scheduler.async([&] {
    scheduler.runReady();
    scheduler.advance(1s);
    ran += "a";
  });
  scheduler.async([&] { ran += "b"; });
  scheduler.runReady();
  EXPECT_EQ(ran, "ab");
}

TEST(MemoryScheduler, ThrowsWhenTasksNeverEnd) {
  MemoryScheduler scheduler;
  std::function<void()> again = [&] { scheduler.async(again); };
  scheduler.async(again);
  EXPECT_THROW(scheduler.runReady(), std::runtime_error);
}

TEST(MemoryScheduler, RunsASyncTaskOfTheMainThreadAtOnce) {
  MemoryScheduler scheduler;
  bool ran = false;
  scheduler.sync([&] { ran = true; });
  EXPECT_TRUE(ran);
  EXPECT_TRUE(scheduler.isMainThread());
}

TEST(MemoryScheduler, DropsTasksWhenItShutsDown) {
  MemoryScheduler scheduler;
  const auto held = std::make_shared<int>(0);
  bool ran = false;
  scheduler.async([&ran, held] { ran = true; });
  scheduler.shutDown();
  scheduler.async([&ran, held] { ran = true; });
  scheduler.sync([&ran] { ran = true; });
  scheduler.runReady();
  EXPECT_FALSE(ran);
  EXPECT_EQ(held.use_count(), 1);
}

TEST(MemoryScheduler, RunsOneThingAtATimeWithoutBudget) {
  MemoryScheduler scheduler;
  int ran = 0;
  for (int i = 0; i < 3; ++i) scheduler.async([&] { ++ran; });
  scheduler.runReady(0us);
  EXPECT_EQ(ran, 1);
  scheduler.runReady(std::chrono::microseconds::max());
  EXPECT_EQ(ran, 3);
}

TEST(MemoryScheduler, KeepsBothClocksStillUntilTimeIsMoved) {
  MemoryScheduler scheduler;
  EXPECT_DOUBLE_EQ(scheduler.secondsSince1970(), MemoryScheduler::kStartOfTime);
  EXPECT_DOUBLE_EQ(scheduler.systemUptime(), MemoryScheduler::kStartOfUptime);
  scheduler.advance(1500ms);
  EXPECT_DOUBLE_EQ(scheduler.secondsSince1970(), MemoryScheduler::kStartOfTime + 1.5);
  EXPECT_DOUBLE_EQ(scheduler.systemUptime(), MemoryScheduler::kStartOfUptime + 1.5);
}

TEST(MemoryScheduler, LetsTheClockJumpWithoutTheUptime) {
  MemoryScheduler scheduler;
  scheduler.advance(10s);
  scheduler.setTime(42.25);
  EXPECT_DOUBLE_EQ(scheduler.secondsSince1970(), 42.25);
  EXPECT_DOUBLE_EQ(scheduler.systemUptime(), MemoryScheduler::kStartOfUptime + 10);
  scheduler.advance(1s);
  EXPECT_DOUBLE_EQ(scheduler.secondsSince1970(), 43.25);
}

TEST(MemoryTimer, TurnsAtEachInterval) {
  MemoryScheduler scheduler;
  std::vector<double> turns;
  const auto timer =
      scheduler.scheduleRepeating(100ms, [&] { turns.push_back(scheduler.systemUptime()); });
  scheduler.advance(99ms);
  EXPECT_TRUE(turns.empty());
  scheduler.advance(201ms);
  ASSERT_EQ(turns.size(), 3u);
  EXPECT_DOUBLE_EQ(turns[0], MemoryScheduler::kStartOfUptime + 0.1);
  EXPECT_DOUBLE_EQ(turns[2], MemoryScheduler::kStartOfUptime + 0.3);
}

TEST(MemoryTimer, TakesTurnsInTheOrderOfTime) {
  MemoryScheduler scheduler;
  std::string turns;
  const auto slow = scheduler.scheduleRepeating(30ms, [&] { turns += "s"; });
  const auto fast = scheduler.scheduleRepeating(20ms, [&] { turns += "f"; });
  scheduler.advance(60ms);
  EXPECT_EQ(turns, "fsfsf");
}

TEST(MemoryTimer, RunsTheTasksOfATurnBeforeTheNextTurn) {
  MemoryScheduler scheduler;
  std::string ran;
  const auto timer = scheduler.scheduleRepeating(10ms, [&] {
    ran += "t";
    scheduler.async([&] { ran += "a"; });
  });
  scheduler.advance(20ms);
  EXPECT_EQ(ran, "tata");
}

TEST(MemoryTimer, MakesUpForMissedTurnsWithASingleOne) {
  MemoryScheduler scheduler;
  int turns = 0;
  const auto timer = scheduler.scheduleRepeating(100ms, [&] { ++turns; });
  scheduler.skip(550ms);
  scheduler.runReady();
  EXPECT_EQ(turns, 1);
  scheduler.advance(49ms);
  EXPECT_EQ(turns, 1);
  scheduler.advance(1ms);
  EXPECT_EQ(turns, 2);
}

TEST(MemoryTimer, FiresAtOnceWithoutMovingTheNextTurn) {
  MemoryScheduler scheduler;
  int turns = 0;
  const auto timer = scheduler.scheduleRepeating(100ms, [&] { ++turns; });
  scheduler.advance(60ms);
  timer->fire();
  EXPECT_EQ(turns, 1);
  scheduler.advance(40ms);
  EXPECT_EQ(turns, 2);
}

TEST(MemoryTimer, StopsWhenItIsInvalidatedAndDropsItsCallback) {
  MemoryScheduler scheduler;
  const auto held = std::make_shared<int>(0);
  const auto timer = scheduler.scheduleRepeating(10ms, [held] { ++*held; });
  EXPECT_TRUE(timer->isValid());
  timer->invalidate();
  timer->invalidate();
  EXPECT_FALSE(timer->isValid());
  EXPECT_EQ(held.use_count(), 1);
  timer->fire();
  scheduler.advance(100ms);
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(scheduler.activeTimerCount(), 0u);
}

TEST(MemoryTimer, MayBeInvalidatedByItsOwnCallback) {
  MemoryScheduler scheduler;
  int turns = 0;
  std::shared_ptr<Timer> timer;
  timer = scheduler.scheduleRepeating(10ms, [&timer, &turns] {
    timer->invalidate();
    ++turns;  // what was captured still exists
  });
  scheduler.advance(100ms);
  EXPECT_EQ(turns, 1);
}

TEST(MemoryTimer, MayBeDroppedByItsOwnCallback) {
  MemoryScheduler scheduler;
  int turns = 0;
  std::shared_ptr<Timer> timer;
  timer = scheduler.scheduleRepeating(10ms, [&timer, &turns] {
    timer.reset();
    ++turns;
  });
  scheduler.advance(100ms);
  EXPECT_EQ(turns, 1);
}

TEST(MemoryTimer, StopsWhenItsHolderDropsIt) {
  MemoryScheduler scheduler;
  int turns = 0;
  auto timer = scheduler.scheduleRepeating(10ms, [&] { ++turns; });
  EXPECT_EQ(scheduler.activeTimerCount(), 1u);
  timer.reset();
  EXPECT_EQ(scheduler.activeTimerCount(), 0u);
  scheduler.advance(100ms);
  EXPECT_EQ(turns, 0);
}

}  // namespace
}  // namespace zovk
