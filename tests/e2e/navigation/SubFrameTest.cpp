#include "e2e/navigation/NavigationFixture.h"
#include "presentation/ZOVKPopupViewController.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SubFrame = NavigationFixture;

std::string frame(const std::string& source) {
  return "<iframe src='" + source + "'></iframe>";
}

TEST_F(SubFrame, BelowThePagesOwnAddressIsShown) {
  const std::string inner = site().page("/own/inner", arrivalPage());
  const std::string own = servePage("", frame(inner));
  show(own);
  EXPECT_EQ(pageTells(), inner);
  EXPECT_THAT(decided(), ElementsAre(own, inner));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(SubFrame, OfAnotherSiteOpensOutside) {
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string own = servePage("tellLater();", frame(other));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(decided(), ElementsAre(own, other));
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(SubFrame, OfASchemeThatAProgramOpensIsHandedToIt) {
  const std::string own = servePage("tellLater();", frame("zovk-test://from-a-frame"));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre("zovk-test://from-a-frame"));
  EXPECT_TRUE(ZOVKPopupViewController::needRefresh());
}

TEST_F(SubFrame, CannotTakeThePageElsewhere) {
  const std::string other = otherSite().page("/other", arrivalPage());
  site().page("/own/inner", page("top.location.href = '" + other + "';"));
  const std::string own = servePage("tellLater();", frame("/own/inner"));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_FALSE(otherSite().wasAsked());
}

}  // namespace
}  // namespace zovk
