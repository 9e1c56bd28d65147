#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using WebPage = NavigationFixture;

constexpr const char* kFollow = "document.querySelector('a').click();";

std::string link(const std::string& target) {
  return "<a href='" + target + "'>there</a>";
}

TEST_F(WebPage, FollowsALinkBelowItsOwnAddressInside) {
  const std::string below = site().page("/own/below", arrivalPage());
  const std::string own = servePage(kFollow, link(below));
  show(own);
  EXPECT_EQ(pageTells(), below);
  EXPECT_THAT(decided(), ElementsAre(own, below));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(WebPage, MayChangeTheParametersOfItsAddress) {
  const std::string own =
      servePage("location.search === '?b=2' ? tell(location.href) : location.href = '?b=2';");
  show(own + "?a=1");
  EXPECT_EQ(pageTells(), own + "?b=2");
  EXPECT_THAT(decided(), ElementsAre(own + "?a=1", own + "?b=2"));
}

TEST_F(WebPage, StaysWhereItIsWhileALinkToAnotherSiteOpensOutside) {
  const std::string other = otherSite().page("/other?a=b&c=%20d", arrivalPage());
  const std::string own = servePage(std::string(kFollow) + "tellLater();", link(other));
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(decided(), ElementsAre(own, other));
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(WebPage, StaysWhereItIsWhenAnotherPageOfItsSiteOpensOutside) {
  const std::string other = site().page("/other", arrivalPage());
  const std::string own = servePage("location.href = '/other'; tellLater();");
  show(own);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(site().requestsTo("/other"), IsEmpty());
}

TEST_F(WebPage, DropsALinkThatNoProgramOpens) {
  openOnly({"zovk-test"});
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string own = servePage(std::string(kFollow) + "tellLater();", link(other));
  show(own);
  awaitDecided(2);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own, other));
  EXPECT_THAT(opener().opened(), IsEmpty());
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(WebPage, GoesToItsAnchorsInside) {
  const std::string own =
      servePage("addEventListener('hashchange', () => tell(location.href));" + std::string(kFollow),
                link("#end"));
  show(own);
  EXPECT_EQ(pageTells(), own + "#end");
  EXPECT_THAT(decided(), ElementsAre(own, own + "#end"));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(WebPage, IsNotAskedAboutAddressesThatItOnlyShows) {
  const std::string own =
      servePage("history.pushState({}, '', '/elsewhere'); tell(location.href);");
  show(own);
  EXPECT_EQ(pageTells(), site().url("/elsewhere"));
  EXPECT_THAT(decided(), ElementsAre(own));
}

TEST_F(WebPage, CannotReachAFile) {
  const std::string file = addFile(arrivalPage());
  const std::string own = servePage("location.href = '" + file + "'; tellLater();");
  show(own);
  // The engine itself turns it down.
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), IsEmpty());
}

}  // namespace
}  // namespace zovk
