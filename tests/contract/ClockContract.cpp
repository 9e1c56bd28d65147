#include <gtest/gtest.h>

#include "Backend.h"

namespace zovk {
namespace {

using std::chrono::milliseconds;

TEST(ClockContract, TimeIsCountedInSecondsSince1970) {
  LoopBackend loop;
  const double year2020 = 1'577'836'800;
  const double year2100 = 4'102'444'800;
  EXPECT_GT(loop.clock().secondsSince1970(), year2020);
  EXPECT_LT(loop.clock().secondsSince1970(), year2100);
}

TEST(ClockContract, UptimeGoesOnWithTimeAndKeepsItsFraction) {
  LoopBackend loop;
  const double start = loop.clock().systemUptime();
  loop.skip(milliseconds(25));
  const double passed = loop.clock().systemUptime() - start;
  EXPECT_GE(passed, 0.0249);
  EXPECT_LT(passed, 20);
}

TEST(ClockContract, UptimeNeverGoesBack) {
  LoopBackend loop;
  double last = loop.clock().systemUptime();
  EXPECT_GT(last, 0);
  for (int i = 0; i < 1000; ++i) {
    const double now = loop.clock().systemUptime();
    ASSERT_GE(now, last);
    last = now;
  }
}

}  // namespace
}  // namespace zovk
