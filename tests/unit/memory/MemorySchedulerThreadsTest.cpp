#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryScheduler.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;

TEST(MemorySchedulerThreads, RunsEveryTaskThatOtherThreadsAddOnTheMainThread) {
  MemoryScheduler scheduler;
  int ran = 0;  // touched on the main thread only
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int j = 0; j < 250; ++j) scheduler.async([&] { ran += scheduler.isMainThread(); });
    });
  }
  scheduler.runUntil([&] { return ran == 1000; }, "a thousand tasks");
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(ran, 1000);
}

TEST(MemorySchedulerThreads, LetsASyncOfAnotherThreadWaitUntilTheTaskHasRun) {
  MemoryScheduler scheduler;
  int ran = 0;
  std::atomic<int> seenAfterwards = 0;
  std::thread other([&] {
    EXPECT_FALSE(scheduler.isMainThread());
    scheduler.sync([&] { ran = 7; });
    seenAfterwards = ran;
  });
  scheduler.runUntil([&] { return seenAfterwards != 0; }, "the other thread to go on");
  other.join();
  EXPECT_EQ(seenAfterwards, 7);
}

TEST(MemorySchedulerThreads, LetsWaitingThreadsGoWhenItShutsDown) {
  MemoryScheduler scheduler;
  std::atomic<bool> ran = false;
  std::thread other([&] { scheduler.sync([&] { ran = true; }); });
  while (scheduler.pendingTaskCount() == 0) std::this_thread::yield();
  scheduler.shutDown();
  other.join();
  EXPECT_FALSE(ran);
}

TEST(MemorySchedulerThreads, SaysWhatItWaitedForInVain) {
  MemoryScheduler scheduler;
  try {
    scheduler.runUntil([] { return false; }, "the moon", 5ms);
    FAIL() << "it returned";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("the moon"), std::string::npos);
  }
}

TEST(MemorySchedulerThreads, LetsOtherThreadsReadTheClocks) {
  MemoryScheduler scheduler;
  std::atomic<bool> stop = false;
  std::thread other([&] {
    double last = 0;
    while (!stop) {
      const double now = scheduler.systemUptime();
      EXPECT_GE(now, last);
      last = now;
    }
  });
  for (int i = 0; i < 100; ++i) scheduler.advance(1ms);
  stop = true;
  other.join();
}

}  // namespace
}  // namespace zovk
