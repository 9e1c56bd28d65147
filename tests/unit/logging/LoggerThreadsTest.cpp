#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "logging/ZPLogger.h"
#include "platform/memory/MemoryLog.h"

namespace zovk {
namespace {

constexpr int kThreads = 16;

template <class Work>
void onManyThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

// Debug lines are on; deciding so takes until every thread is about to write its first line.
LogEnvironment slowEnvironment(const MemoryLog& log, std::atomic<int>& arrived) {
  LogEnvironment environment = memoryLogEnvironment(log, true);
  environment.infoFlag = [&arrived](std::string_view) {
    for (int now = arrived; now < kThreads; now = arrived) arrived.wait(now);
    return true;
  };
  return environment;
}

TEST(LoggerThreads, ReadTheSettingOnceAndLoseNoLineWhileItIsRead) {
  const MemoryLog log;
  std::atomic<int> arrived{0};
  ZPLogger::setEnvironment(slowEnvironment(log, arrived));
  onManyThreads([&arrived](int number) {
    ++arrived;
    arrived.notify_all();
    ZPLogger::ZPLog(0, "Game", "Game::start", 7, "thread %d", number);
  });
  EXPECT_EQ(log.count("Get Config File"), 1U);
  EXPECT_EQ(log.count("Success get ZOVK_DEBUG"), 1U);
  EXPECT_EQ(log.count("[Debug]Game Game::start 7 thread "), std::size_t{kThreads});
  EXPECT_EQ(log.lines()[0], "Get Config File");
  EXPECT_EQ(log.lines()[1], "Success get ZOVK_DEBUG");
}

TEST(LoggerThreads, WriteWholeLines) {
  const MemoryLog log;
  ZPLogger::setEnvironment(memoryLogEnvironment(log, true));
  constexpr int kLines = 200;
  onManyThreads([](int number) {
    for (int line = 0; line < kLines; ++line) {
      ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%d-%d", number, line);
      logError("%d-%d", number, line);
    }
  });
  auto lines = log.lines();
  std::vector<std::string> expected{"Get Config File", "Success get ZOVK_DEBUG"};
  for (int number = 0; number < kThreads; ++number) {
    for (int line = 0; line < kLines; ++line) {
      const std::string text = std::to_string(number) + "-" + std::to_string(line);
      expected.push_back("[Debug]Game Game::start 7 " + text);
      expected.push_back("[Error] " + text);
    }
  }
  std::sort(lines.begin(), lines.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(lines, expected);
}

TEST(LoggerThreads, MayWriteWhileTheEnvironmentIsReplaced) {
  const MemoryLog first;
  const MemoryLog second;
  ZPLogger::setEnvironment(memoryLogEnvironment(first, true));
  constexpr int kLines = 100;
  onManyThreads([&](int number) {
    for (int line = 0; line < kLines; ++line) {
      if (number == 0) ZPLogger::setEnvironment(memoryLogEnvironment(second, true));
      ZPLogger::ZPLog(0, "Game", "Game::start", 7, "hello");
    }
  });
  EXPECT_EQ(first.count("hello") + second.count("hello"), std::size_t{kThreads * kLines});
}

}  // namespace
}  // namespace zovk
