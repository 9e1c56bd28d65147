#include <gtest/gtest.h>

#include "helper/page/OpenLimit.h"

namespace zovk::helper {
namespace {

using std::chrono::milliseconds;

class Opening : public testing::Test {
 protected:
  int takeAll() {
    int taken = 0;
    while (limit_.take(now_) && taken < 100) ++taken;
    return taken;
  }

  OpenLimit limit_;
  OpenLimit::Time now_{std::chrono::hours(1)};
};

TEST_F(Opening, WithoutAClickIsForOneAddressOfAWebView) {
  EXPECT_EQ(takeAll(), 0) << "no page yet";
  limit_.webViewMade();
  EXPECT_EQ(takeAll(), 1);
  limit_.webViewMade();
  limit_.webViewMade();
  EXPECT_EQ(takeAll(), 1);
}

TEST_F(Opening, AfterAClickIsForTwoAddresses) {
  limit_.playerActed(now_);
  EXPECT_EQ(takeAll(), 2);
  limit_.playerActed(now_);
  limit_.playerActed(now_);
  EXPECT_EQ(takeAll(), 2) << "clicks do not add up";
}

TEST_F(Opening, AfterAClickLeavesTheOneWithout) {
  limit_.webViewMade();
  limit_.playerActed(now_);
  EXPECT_EQ(takeAll(), 3);
}

TEST_F(Opening, AfterAClickIsPossibleForTenSeconds) {
  limit_.playerActed(now_);
  now_ += std::chrono::seconds(10);
  EXPECT_TRUE(limit_.take(now_));
  now_ += milliseconds(1);
  EXPECT_FALSE(limit_.take(now_));
}

TEST_F(Opening, ThatIsRefusedIsOneLineASecond) {
  EXPECT_TRUE(limit_.refusalLine().has_value());
  EXPECT_FALSE(limit_.refusalLine().has_value());
}

}  // namespace
}  // namespace zovk::helper
