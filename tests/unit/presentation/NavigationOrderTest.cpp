#include "unit/presentation/OrderFixture.h"

namespace zovk {
namespace {

// Read before any test can set it.
const bool kFlagAtTheStart = ZOVKPopupViewController::needRefresh();

// What is already done when a navigation is decided.
class NavigationOrder : public OrderFixture {
 protected:
  struct Moment {
    NavigationPolicy decision;
    std::size_t opened;
    bool flag;
    bool refreshHidden;
  };

  /// One navigation of the main frame, and what was there when it was decided.
  Moment decide(const std::string& url) {
    std::vector<Moment> moments;
    controller().decidePolicyForNavigationAction(
        *page(), {url, TargetFrame::kMain}, [&](NavigationPolicy decision) {
          moments.push_back({decision, memory().userInterface.openedUrls().size(),
                             ZOVKPopupViewController::needRefresh(),
                             layout()->view("refreshBtn").hidden});
        });
    settle();
    EXPECT_EQ(moments.size(), 1U) << url;
    return moments.at(0);
  }
};

TEST(NavigationFlag, IsDownBeforeAnyNavigation) {
  EXPECT_FALSE(kFlagAtTheStart);
}

TEST_F(NavigationOrder, AnotherSchemeIsOpenedBeforeItIsCancelled) {
  memory().userInterface.setOpenableSchemes({"game"});
  show({webPage("a")});
  const Moment moment = decide("game://x");
  EXPECT_EQ(moment.decision, NavigationPolicy::kCancel);
  EXPECT_EQ(moment.opened, 1U);
}

TEST_F(NavigationOrder, ASchemeThatNobodyOpensOffersARefreshBeforeItIsCancelled) {
  show({webPage("a")});
  ZOVKPopupViewController::setNeedRefresh(true);
  ASSERT_TRUE(layout()->view("refreshBtn").hidden);
  const Moment moment = decide("game://x");
  EXPECT_EQ(moment.decision, NavigationPolicy::kCancel);
  EXPECT_FALSE(moment.flag);
  EXPECT_FALSE(moment.refreshHidden);
}

TEST_F(NavigationOrder, AnotherPageIsOpenedBeforeItIsCancelled) {
  show({webPage("a")});
  const Moment moment = decide("https://other.example/");
  EXPECT_EQ(moment.decision, NavigationPolicy::kCancel);
  EXPECT_EQ(moment.opened, 1U);
}

TEST_F(NavigationOrder, ItsLineComesFirst) {
  show({webPage("a")});
  std::size_t loadsThen = 0;
  std::size_t openedThen = 1;
  whenLogged("Decide policy for navigation action", [&] {
    loadsThen = page()->loads().size();
    openedThen = memory().userInterface.openedUrls().size();
  });
  page()->navigate("https://other.example/", TargetFrame::kNone);
  settle();
  EXPECT_EQ(loadsThen, 1U) << "that of the popup's own page";
  EXPECT_EQ(openedThen, 0U);
  EXPECT_EQ(page()->loads().size(), 2U);
}

TEST_F(NavigationOrder, ANewWindowIsLoadedHereBeforeItIsDecided) {
  show({webPage("a")});
  std::size_t loadsThen = 0;
  controller().decidePolicyForNavigationAction(
      *page(), {"https://other.example/", TargetFrame::kNone},
      [&](NavigationPolicy) { loadsThen = page()->loads().size(); });
  settle();
  EXPECT_EQ(loadsThen, 2U);
}

}  // namespace
}  // namespace zovk
