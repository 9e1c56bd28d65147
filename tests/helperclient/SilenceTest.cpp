#include <gtest/gtest.h>

#include "platform/linux/helper/HelperBackOff.h"
#include "platform/linux/helper/HelperSilence.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;

/// A helper that is given 5 s, in time that the test makes.
class HelperSilenceTest : public testing::Test {
 protected:
  bool after(HelperSilence::Duration time) { return silence_.isTooLong(now_ += time); }

  HelperSilence::TimePoint now_{100h};
  HelperSilence silence_{5s, 1s};
  HelperSilenceTest() { silence_.begin(now_); }
};

TEST_F(HelperSilenceTest, IsTooLongOnceItsBoundHasPassed) {
  for (int i = 0; i < 9; ++i) EXPECT_FALSE(after(500ms)) << i;
  EXPECT_FALSE(after(499ms));
  EXPECT_TRUE(after(1ms));
}

TEST_F(HelperSilenceTest, EndsWithAnySignOfLife) {
  for (int i = 0; i < 100; ++i) {
    if (i % 9 == 0) silence_.heard();
    EXPECT_FALSE(after(500ms));
  }
}

TEST_F(HelperSilenceTest, CountsLittleOfTheTimeInWhichTheGameDidNotLook) {
  EXPECT_FALSE(after(12h)) << "a machine that slept, a game in a debugger";
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(after(10min));
  EXPECT_TRUE(after(10min)) << "but it looked five times and heard nothing";
}

TEST_F(HelperSilenceTest, BeginsAnew) {
  for (int i = 0; i < 4; ++i) EXPECT_FALSE(after(1s));
  now_ += 1h;
  silence_.begin(now_);
  for (int i = 0; i < 4; ++i) EXPECT_FALSE(after(1s));
  EXPECT_TRUE(after(1s));
}

/// Starts of helpers that fail, in time that the test makes.
class HelperBackOffTest : public testing::Test {
 protected:
  /// Returns the seconds in which nothing may be started after one more failure.
  int pauseAfterFailure() {
    backOff_.gaveUp(now_);
    int seconds = 0;
    for (; !backOff_.mayStart(now_); now_ += 1s) ++seconds;
    return seconds;
  }

  HelperBackOff::TimePoint now_{100h};
  HelperBackOff backOff_;
};

TEST_F(HelperBackOffTest, DoublesThePauseUpToItsBound) {
  EXPECT_TRUE(backOff_.mayStart(now_));
  for (const int pause : {0, 1, 2, 4, 8, 16, 32, 60, 60}) EXPECT_EQ(pauseAfterFailure(), pause);
}

TEST_F(HelperBackOffTest, IsForgottenWhenAllWentWell) {
  for (int i = 0; i < 5; ++i) pauseAfterFailure();
  backOff_.gaveUp(now_);
  backOff_.wentWell();
  EXPECT_TRUE(backOff_.mayStart(now_));
  EXPECT_EQ(pauseAfterFailure(), 0);
}

TEST_F(HelperBackOffTest, IsSaidOnceUntilAllWentWell) {
  EXPECT_TRUE(backOff_.saysSo());
  EXPECT_FALSE(backOff_.saysSo());
  backOff_.wentWell();
  EXPECT_TRUE(backOff_.saysSo());
}

}  // namespace
}  // namespace zovk
