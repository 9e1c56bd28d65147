#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

class Navigation : public ControllerFixture {
 protected:
  bool refreshHidden() { return layout()->view("refreshBtn").hidden; }
};

TEST_F(Navigation, TheDecisionComesBeforeTheFlagAndTheButton) {
  const std::string own = webPage("a").uri;
  show({webPage("a")});
  layout()->view("refreshBtn").hidden = false;
  bool flagSeen = true;
  bool hiddenSeen = true;
  controller().decidePolicyForNavigationAction(*page(), {own, TargetFrame::kMain},
                                               [&](NavigationPolicy policy) {
                                                 EXPECT_EQ(policy, NavigationPolicy::kAllow);
                                                 flagSeen = ZOVKPopupViewController::needRefresh();
                                                 hiddenSeen = refreshHidden();
                                               });
  EXPECT_FALSE(flagSeen);
  EXPECT_FALSE(hiddenSeen);
  EXPECT_TRUE(ZOVKPopupViewController::needRefresh());
  EXPECT_TRUE(refreshHidden());
}

TEST_F(Navigation, AFileOfThePopupsOwnIsAllowedBeforeItIsLoaded) {
  show({pageFile("a")});
  ASSERT_EQ(page()->loads().size(), 1U);
  EXPECT_THAT(page()->allowedAhead(), ::testing::ElementsAre(page()->lastLoad()));
  EXPECT_TRUE(page()->navigate(page()->lastLoad()).allowed());
}

TEST_F(Navigation, AWebPageIsDecidedWhenItsAddressIsKnown) {
  show({webPage("a")});
  ASSERT_EQ(page()->loads().size(), 1U);
  EXPECT_THAT(page()->allowedAhead(), ::testing::IsEmpty());
}

TEST_F(Navigation, ARemotePageMayCarryOtherParametersThanItsAddress) {
  ZOVKPopupModel popup = webPage("a");
  popup.uri += "?a=1";
  show({popup});
  EXPECT_TRUE(page()->navigate(webPage("a").uri + "?a=1&b=2").allowed());
}

TEST_F(Navigation, TheFormOfAnAddressThatThePageHadLoadedIsNotThePopups) {
  show({webPage("a")});
  page()->resolveAddress(webPage("a").uri, "https://other-form.example/a");
  page()->resolveAddress("https://elsewhere.example/", "https://elsewhere.example/");
  EXPECT_TRUE(page()->navigate("https://other-form.example/a").allowed());
  EXPECT_TRUE(page()->navigate("https://elsewhere.example/").cancelled());
}

TEST_F(Navigation, AnAddressOfNoFormStaysAsThePopupWritesIt) {
  show({webPage("a")});
  page()->resolveAddress(webPage("a").uri, "");
  EXPECT_TRUE(page()->navigate(webPage("a").uri).allowed());
  EXPECT_TRUE(page()->navigate("https://elsewhere.example/").cancelled());
}

TEST_F(Navigation, TheFormOfOnePopupIsNotThatOfTheNext) {
  show({webPage("a"), webPage("b")});
  page()->resolveAddress(webPage("a").uri, "https://other-form.example/");
  choose("skip");
  EXPECT_TRUE(page()->navigate("https://other-form.example/").cancelled());
  EXPECT_TRUE(page()->navigate(webPage("b").uri).allowed());
}

TEST_F(Navigation, TheFormOfOnePopupIsNotThatOfTheNextWhileThatIsAskedFor) {
  show({webPage("a"), conditional("b")});
  page()->resolveAddress(webPage("a").uri, "https://other-form.example/");
  choose("skip");
  EXPECT_EQ(page()->loads().size(), 1U);
  EXPECT_TRUE(page()->navigate("https://other-form.example/").cancelled());
  EXPECT_TRUE(page()->navigate(webPage("b").uri).allowed());
}

TEST_F(Navigation, TheFormStaysKnownWhenThePageIsLoadedAgain) {
  show({webPage("a")});
  page()->resolveAddress(webPage("a").uri, "https://other-form.example/a");
  controller().refreshButtonClicked();
  settle();
  EXPECT_TRUE(page()->navigate("https://other-form.example/a").allowed());
}

TEST_F(Navigation, APageFileWhosePathNeedsEncodingIsItsOwnPage) {
  ZOVKPopupModel popup = pageFile("a");
  popup.sig = "a b?c";
  show({popup});
  EXPECT_THAT(page()->lastLoad(), ::testing::HasSubstr("a%20b%3Fc.html"));
  EXPECT_TRUE(page()->navigate(page()->lastLoad() + "?x=1").allowed());
  EXPECT_TRUE(page()->navigate("file://" + std::string(kCache) + "/other.html").cancelled());
}

TEST_F(Navigation, BeforeTheFirstPopupNothingIsAllowedInside) {
  controller().showPopup(listOf({webPage("a")}), window().get(), recordAnswer());
  EXPECT_TRUE(page()->navigate(webPage("a").uri).cancelled());
}

TEST_F(Navigation, TheFlagCarriesOverToTheNextPopup) {
  ZOVKPopupModel game = webPage("b");
  game.pop_type = 2;
  show({webPage("a"), game});
  page()->navigate(webPage("a").uri);
  choose("skip");
  EXPECT_TRUE(refreshHidden());
  EXPECT_NE(layout()->view("contentView").background, Color::black(0.5));
}

}  // namespace
}  // namespace zovk
