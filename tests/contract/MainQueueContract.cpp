#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Backend.h"

namespace zovk {
namespace {

using testing::ElementsAre;

class MainQueueContract : public testing::Test {
 protected:
  MainQueue& queue() { return loop.queue(); }
  LoopBackend loop;
};

TEST_F(MainQueueContract, RunsTasksInTheOrderInWhichTheyWereAdded) {
  std::vector<int> order;
  for (int i = 1; i <= 3; ++i) queue().async([&order, i] { order.push_back(i); });
  loop.run();
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(MainQueueContract, DoesNotRunATaskWhileItIsAdded) {
  bool ran = false;
  queue().async([&] { ran = true; });
  EXPECT_FALSE(ran);
  loop.run();
  EXPECT_TRUE(ran);
}

TEST_F(MainQueueContract, RunsEachTaskOnce) {
  int count = 0;
  queue().async([&] { ++count; });
  loop.run();
  loop.run();
  EXPECT_EQ(count, 1);
}

TEST_F(MainQueueContract, ATaskAddedByATaskRunsAfterThoseThatWaited) {
  std::vector<int> order;
  queue().async([&] {
    queue().async([&] { order.push_back(3); });
    order.push_back(1);
  });
  queue().async([&] { order.push_back(2); });
  loop.run();
  EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(MainQueueContract, KnowsTheMainThreadFromOthers) {
  bool elsewhere = true;
  std::thread([&] { elsewhere = queue().isMainThread(); }).join();
  EXPECT_FALSE(elsewhere);
  EXPECT_TRUE(queue().isMainThread());
}

TEST_F(MainQueueContract, TasksRunOnTheMainThread) {
  bool onMain = false;
  std::thread([&] { queue().async([&] { onMain = queue().isMainThread(); }); }).join();
  loop.run();
  EXPECT_TRUE(onMain);
}

TEST_F(MainQueueContract, SyncOnTheMainThreadRunsTheTaskAtOnceBeforeThoseThatWait) {
  std::vector<int> order;
  queue().async([&] { order.push_back(2); });
  queue().sync([&] { order.push_back(1); });
  EXPECT_THAT(order, ElementsAre(1));
  loop.run();
  EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_F(MainQueueContract, SyncFromAnotherThreadReturnsOnceTheMainThreadHasRunTheTask) {
  int value = 0;
  std::atomic<bool> returned = false;
  int seen = 0;
  std::thread other([&] {
    queue().sync([&] { value = 7; });
    seen = value;
    returned = true;
    queue().async([] {});
  });
  loop.runUntil([&] { return returned.load(); }, "sync to return");
  other.join();
  EXPECT_EQ(seen, 7);
}

TEST_F(MainQueueContract, TasksOfOneThreadKeepTheirOrderAmongThoseOfOthers) {
  constexpr int kThreads = 4;
  constexpr int kTasks = 200;
  std::vector<std::vector<int>> orders(kThreads);
  int count = 0;
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kTasks; ++i)
        queue().async([&, t, i] { orders[t].push_back(i), ++count; });
    });
  }
  loop.runUntil([&] { return count == kThreads * kTasks; }, "all tasks");
  for (auto& thread : threads) thread.join();
  for (const auto& order : orders) EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(MainQueueContract, LetsGoOfATaskOnceItHasRun) {
  auto held = std::make_shared<int>(1);
  queue().async([held] {});
  EXPECT_EQ(held.use_count(), 2);
  loop.run();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainQueueContract, ShutDownDropsWaitingTasksWithoutRunningThem) {
  auto held = std::make_shared<int>(0);
  queue().async([held] { ++*held; });
  loop.shutDown();
  loop.run();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainQueueContract, ATaskMayShutTheQueueDown) {
  bool ran = false;
  queue().async([&] { loop.shutDown(); });
  queue().async([&] { ran = true; });
  loop.run();
  EXPECT_FALSE(ran);
}

TEST_F(MainQueueContract, TasksAddedAfterShutDownAreDropped) {
  loop.shutDown();
  auto held = std::make_shared<int>(0);
  queue().async([held] { ++*held; });
  loop.run();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MainQueueContract, ShutDownLetsGoOfAThreadThatWaitsInSyncWithoutRunningItsTask) {
  bool ran = false;
  std::promise<void> started;
  std::thread other([&] {
    started.set_value();
    queue().sync([&] { ran = true; });
  });
  started.get_future().wait();
  loop.shutDown();
  other.join();
  EXPECT_FALSE(ran);
}

TEST_F(MainQueueContract, SyncAfterShutDownReturnsWithoutRunningTheTask) {
  loop.shutDown();
  bool ran = false;
  queue().sync([&] { ran = true; });
  std::thread([&] { queue().sync([&] { ran = true; }); }).join();
  EXPECT_FALSE(ran);
}

TEST_F(MainQueueContract, ShutDownCanBeRepeated) {
  loop.shutDown();
  loop.shutDown();
}

}  // namespace
}  // namespace zovk
