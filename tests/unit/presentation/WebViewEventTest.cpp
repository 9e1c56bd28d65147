#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WebViewEvent : public ControllerFixture {
 protected:
  WebViewEvent() {
    ZOVKPopupModel game = webPage("a");
    game.pop_type = 2;
    show({game});
    log().clear();
  }
  Color contentBackground() { return layout()->view("contentView").background.value(); }
  std::vector<std::string> debug() { return controllerMessages(log()); }
};

TEST_F(WebViewEvent, TheBeginningOfALoadIsLogged) {
  page()->startProvisional();
  EXPECT_THAT(debug(), ElementsAre("Did start provisional navigation"));
}

TEST_F(WebViewEvent, FailuresAreOnlyLogged) {
  const auto visible = layout()->visibleOutlets();
  page()->failProvisional("no host");
  page()->fail("cut off");
  settle();
  EXPECT_THAT(debug(), ElementsAre("Did fail provisional navigation, error:no host",
                                   "Did fail navigation, error:cut off"));
  EXPECT_EQ(layout()->visibleOutlets(), visible);
  EXPECT_EQ(contentBackground(), Color::black(0.5));
  EXPECT_EQ(page()->loads().size(), 1U);
  EXPECT_TRUE(answers().empty());
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(WebViewEvent, AFinishedPageLiftsTheDimming) {
  EXPECT_EQ(contentBackground(), Color::black(0.5));
  page()->finish();
  EXPECT_THAT(debug(), ElementsAre("Did finish navigation"));
  EXPECT_EQ(contentBackground(), Color::black(0));
}

TEST_F(WebViewEvent, AnEndedProcessIsAnsweredByLoadingThePageAgainWithoutALogLine) {
  page()->terminateProcess();
  EXPECT_EQ(page()->reloadCount(), 0) << "there is no address yet";
  page()->setUrl(webPage("a").uri);
  page()->terminateProcess();
  EXPECT_EQ(page()->reloadCount(), 1);
  EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(WebViewEvent, AProcessThatCannotRunEndsTheRunWithItsReason) {
  page()->failProcess("it ends at once");
  settle();
  EXPECT_THAT(answers(), ElementsAre(Answer{-1, "it ends at once"}));
  EXPECT_EQ(page()->reloadCount(), 0);
}

TEST_F(WebViewEvent, APageThatHangsIsLoggedAndGetsTheCloseButtonOnEveryLayout) {
  ASSERT_TRUE(layout()->view("crossBtn").hidden);
  page()->setResponsive(false);
  EXPECT_FALSE(layout()->view("crossBtn").hidden);
  EXPECT_THAT(errorMessages(log()), ElementsAre("Page of a does not answer"));
  memory().device.setOrientation(Orientation::kLandscapeLeft);
  window()->resize({1920, 1080});
  settle();
  EXPECT_EQ(layout()->name(), "ZOVKPopupViewLandscape");
  EXPECT_FALSE(layout()->view("crossBtn").hidden);
  press("crossButtonClicked");
  EXPECT_THAT(answers(), ElementsAre(Answer{0, R"({"action":"skip","msg":""})"}));
}

TEST_F(WebViewEvent, APageThatAnswersAgainGetsNoCloseButtonOnTheNextLayout) {
  page()->setResponsive(false);
  page()->setResponsive(true);
  memory().device.setOrientation(Orientation::kLandscapeLeft);
  window()->resize({1920, 1080});
  settle();
  EXPECT_TRUE(layout()->view("crossBtn").hidden);
  EXPECT_EQ(errorMessages(log()).size(), 1U);
}

TEST_F(WebViewEvent, APageWithAnswerButtonsThatHangsHasAWayOutAlready) {
  close();
  show({webPage("ZOVKPolicy")});
  page()->setResponsive(false);
  EXPECT_TRUE(layout()->view("crossBtn").hidden);
  EXPECT_THAT(errorMessages(log()), ElementsAre("Page of ZOVKPolicy does not answer"));
}

TEST_F(WebViewEvent, TheNextPopupDoesNotInheritAHangingPage) {
  close();
  ZOVKPopupModel first = webPage("a");
  ZOVKPopupModel second = webPage("b");
  first.pop_type = second.pop_type = 2;
  show({first, second});
  page()->setResponsive(false);
  press("crossButtonClicked");
  ASSERT_EQ(sceneOnScreen(), "b");
  EXPECT_TRUE(layout()->view("crossBtn").hidden);
}

TEST_F(WebViewEvent, ANewWindowIsLoadedInTheSameWebView) {
  page()->requestNewWindow("https://new.example/");
  EXPECT_EQ(page()->lastLoad(), "https://new.example/");
  controller().createWebView(*page(), {"https://sub.example/", TargetFrame::kSub});
  EXPECT_EQ(page()->lastLoad(), "https://sub.example/");
  controller().createWebView(*page(), {"https://main.example/", TargetFrame::kMain});
  EXPECT_EQ(page()->lastLoad(), "https://sub.example/");
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1U);
}

}  // namespace
}  // namespace zovk
