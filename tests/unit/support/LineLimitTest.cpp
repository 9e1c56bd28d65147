#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/LineLimit.h"

namespace zovk {
namespace {

class LineLimitTest : public ::testing::Test {
 protected:
  double now_ = 100;
  LineLimit limit_{[this] { return now_; }};
};

TEST_F(LineLimitTest, LetsTheFirstLineThroughAsItIs) {
  EXPECT_EQ(limit_.line("bad"), "bad");
}

TEST_F(LineLimitTest, HoldsLinesBackUntilASecondHasPassed) {
  limit_.line("bad");
  EXPECT_EQ(limit_.line("bad"), std::nullopt);
  now_ = 100.999;
  EXPECT_EQ(limit_.line("bad"), std::nullopt);
  now_ = 101;
  EXPECT_NE(limit_.line("bad"), std::nullopt);
}

TEST_F(LineLimitTest, SaysHowManyWereHeldBack) {
  limit_.line("first");
  for (int i = 0; i < 3; ++i) limit_.line("held");
  now_ = 101;
  EXPECT_EQ(limit_.line("next"), "next (3 more such lines held back)");
}

TEST_F(LineLimitTest, CountsAnewAfterEachLine) {
  limit_.line("first");
  limit_.line("held");
  now_ = 101;
  limit_.line("second");
  now_ = 102;
  EXPECT_EQ(limit_.line("third"), "third");
}

TEST_F(LineLimitTest, MeasuresTheSecondFromTheLastLineWritten) {
  limit_.line("first");
  now_ = 100.9;
  limit_.line("held");
  now_ = 101.5;
  limit_.line("second");
  now_ = 102.4;
  EXPECT_EQ(limit_.line("third"), std::nullopt);
}

TEST_F(LineLimitTest, LetsAsManyThroughInASecondAsItWasToldTo) {
  LineLimit limit([this] { return now_; }, 2);
  EXPECT_EQ(limit.line("a"), "a");
  now_ = 100.9;
  EXPECT_EQ(limit.line("b"), "b");
  EXPECT_EQ(limit.line("c"), std::nullopt);
  now_ = 101;
  EXPECT_EQ(limit.line("d"), "d (1 more such lines held back)");
  EXPECT_EQ(limit.line("e"), "e");
  EXPECT_EQ(limit.line("f"), std::nullopt);
  now_ = 101.5;
  EXPECT_EQ(limit.rest(), "f");
  EXPECT_EQ(limit.line("g"), "g") << "a new second began with the rest";
  EXPECT_EQ(limit.line("h"), std::nullopt);
}

TEST_F(LineLimitTest, HasNoRestWhenNothingWasHeldBack) {
  EXPECT_EQ(limit_.rest(), std::nullopt);
  limit_.line("bad");
  EXPECT_EQ(limit_.rest(), std::nullopt);
}

TEST_F(LineLimitTest, GivesTheLastHeldLineAsTheRestWithTheNumberOfTheOthers) {
  limit_.line("first");
  limit_.line("second");
  EXPECT_EQ(limit_.rest(), "second");
  for (const char* text : {"a", "b", "c"}) limit_.line(text);
  EXPECT_EQ(limit_.rest(), "c (2 more such lines held back)");
  EXPECT_EQ(limit_.rest(), std::nullopt);
}

TEST_F(LineLimitTest, CountsALineThatStandsForSeveral) {
  EXPECT_EQ(limit_.line("bad", 3), "bad (2 more such lines held back)");
  limit_.line("bad", 4);
  now_ = 101;
  EXPECT_EQ(limit_.line("bad", 5), "bad (8 more such lines held back)");
  limit_.line("bad", 6);
  EXPECT_EQ(limit_.rest(), "bad (5 more such lines held back)");
}

TEST_F(LineLimitTest, BeginsANewSecondWithTheRest) {
  limit_.line("first");
  limit_.line("second");
  now_ = 105;
  limit_.rest();
  now_ = 105.5;
  EXPECT_EQ(limit_.line("third"), std::nullopt);
}

TEST_F(LineLimitTest, CountsEveryLineOfSeveralThreads) {
  limit_.line("first");
  std::atomic<int> passed = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int line = 0; line < 1000; ++line) passed += limit_.line("held") ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(passed, 0);
  EXPECT_EQ(limit_.rest(), "held (3999 more such lines held back)");
}

TEST(LineLimit, ReadsAClockThatNeverGoesBack) {
  const double before = LineLimit::steadySeconds();
  EXPECT_GE(LineLimit::steadySeconds(), before);
  LineLimit limit;
  EXPECT_EQ(limit.line("first"), "first");
}

}  // namespace
}  // namespace zovk
