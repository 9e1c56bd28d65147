#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

using NewWindow = NavigationFixture;

std::string onClick(const std::string& script) {
  return "addEventListener('click', () => { " + script + " }, {once: true}); ready();";
}

std::string link(const std::string& target) {
  return "<a target=_blank style='position:fixed;inset:0' href='" + target + "'>there</a>";
}

TEST_F(NewWindow, OfThePagesOwnAddressIsLoadedInTheSameWebView) {
  const std::string below = site().page("/own/below", arrivalPage());
  const std::string own = servePage(onClick("window.open('" + below + "');"));
  show(own);
  clickPage();
  EXPECT_EQ(pageTells(), below);
  EXPECT_THAT(decided(), ElementsAre(own, own + "#ready", below));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(NewWindow, OfAnotherSiteOpensOutsideAndThePageStays) {
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string own = servePage(onClick("window.open('" + other + "'); tellLater();"));
  show(own);
  clickPage();
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own + "#ready");
  EXPECT_THAT(decided(), ElementsAre(own, own + "#ready", other));
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_FALSE(otherSite().wasAsked());
}

// A link is asked about twice: as the new window that it wants, and as the load in this one.
TEST_F(NewWindow, OfALinkIsLoadedInTheSameWebView) {
  const std::string below = site().page("/own/below", arrivalPage());
  const std::string own = servePage("ready();", link(below));
  show(own);
  clickPage();
  EXPECT_EQ(pageTells(), below);
  const auto all = decided();
  ASSERT_GE(all.size(), 4U);
  EXPECT_THAT(std::vector(all.begin() + 2, all.end()), Each(below));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_F(NewWindow, OfALinkToAnotherSiteOpensOutsideForBoth) {
  const std::string other = otherSite().page("/other", arrivalPage());
  const std::string own = servePage("ready(); tellLater();", link(other));
  show(own);
  clickPage();
  awaitOpened(2);
  EXPECT_EQ(pageTells(), own + "#ready");
  EXPECT_THAT(decided(), ElementsAre(own, own + "#ready", other, other));
  EXPECT_THAT(opener().opened(), ElementsAre(other, other));
  EXPECT_FALSE(otherSite().wasAsked());
}

TEST_F(NewWindow, ThatNobodyClickedForIsNotAskedAbout) {
  const std::string own = servePage("window.open('/own/below'); tellLater();");
  show(own);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own));
}

}  // namespace
}  // namespace zovk
