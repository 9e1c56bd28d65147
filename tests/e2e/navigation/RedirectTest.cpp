#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Redirect = NavigationFixture;

constexpr const char* kHop = "location.href = '/own/hop'; tellLater();";

TEST_F(Redirect, BelowThePagesOwnAddressIsFollowedAndDecidedOnce) {
  const std::string own = servePage("location.href = '/own/hop';");
  const std::string landed = site().page("/own/landed", arrivalPage());
  const std::string hop = site().redirect("/own/hop", landed);
  show(own);
  EXPECT_EQ(pageTells(), landed);
  EXPECT_THAT(decided(), ElementsAre(own, hop, landed));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(Redirect, ToAnotherSiteOpensOutsideAndThePageStays) {
  const std::string own = servePage(kHop);
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string hop = site().redirect("/own/hop", other);
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(decided(), ElementsAre(own, hop, other));
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(Redirect, ToASchemeThatAProgramOpensIsHandedToIt) {
  const std::string own = servePage(kHop);
  const std::string hop = site().redirect("/own/hop", "zovk-test://from-a-redirect");
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre("zovk-test://from-a-redirect"));
  EXPECT_THAT(decided(), ElementsAre(own, hop, "zovk-test://from-a-redirect"));
}

}  // namespace
}  // namespace zovk
