#include "e2e/navigation/NavigationFixture.h"
#include "presentation/ZOVKPopupViewController.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using CustomScheme = NavigationFixture;

TEST_F(CustomScheme, IsHandedAsItStandsToTheProgramThatOpensIt) {
  const std::string address = "zovk-test://shop/item?id=7&name=a%20b#'part'";
  const std::string own = servePage("location.href = `" + address + "`; tellLater();");
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(address));
  EXPECT_THAT(decided(), ElementsAre(own, address));
  EXPECT_TRUE(ZOVKPopupViewController::needRefresh()) << "unchanged";
}

TEST_F(CustomScheme, ThatNoProgramOpensAsksForTheRefreshButton) {
  const std::string own = servePage("location.href = 'zovk-nobody://x'; tellLater();");
  show(own);
  awaitDecided(2);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own, "zovk-nobody://x"));
  EXPECT_THAT(opener().opened(), IsEmpty());
  EXPECT_FALSE(ZOVKPopupViewController::needRefresh());
}

TEST_F(CustomScheme, OfAMailIsOneLikeAnyOther) {
  const std::string own = servePage("location.href = 'mailto:a@b.example'; tellLater();");
  show(own);
  awaitDecided(2);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own, "mailto:a@b.example"));
  EXPECT_FALSE(ZOVKPopupViewController::needRefresh());
}

TEST_F(CustomScheme, IsHandedOutByAFilePageToo) {
  const std::string own = showFile("location.href = 'zovk-test:plain'; tellLater();");
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre("zovk-test:plain"));
  EXPECT_THAT(decided(), ElementsAre(own, "zovk-test:plain"));
}

}  // namespace
}  // namespace zovk
