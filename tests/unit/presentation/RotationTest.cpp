#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

class Rotation : public ControllerFixture {
 protected:
  void turn() {
    memory().device.setOrientation(Orientation::kLandscapeLeft);
    window()->resize({1920, 1080});
  }
};

TEST_F(Rotation, LoadsTheOtherLayoutAndTakesTheWebViewAlong) {
  show({webPage("a")});
  const auto* const view = page().get();
  turn();
  settle();
  EXPECT_EQ(layout()->name(), "ZOVKPopupViewLandscape");
  EXPECT_EQ(page().get(), view);
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1U);
  EXPECT_EQ(layout()->view("contentView").childNames().front(), "web");
  EXPECT_EQ(layout()->view("crossBtn").image, std::string(kBundle) + "/close.png");
}

TEST_F(Rotation, DoesNotLoadThePageAgain) {
  show({webPage("a")});
  turn();
  settle();
  EXPECT_EQ(page()->loads().size(), 1U);
  EXPECT_EQ(page()->reloadCount(), 0);
}

TEST_F(Rotation, KeepsTheOldLayoutTransparentUntilTheTransitionEnds) {
  show({webPage("a")});
  const auto old = layout();
  log().clear();
  turn();
  EXPECT_EQ(old->view("contentView").alpha, 0);
  EXPECT_THAT(window()->rootNode().childNames(),
              ElementsAre("ZOVKPopupView", "ZOVKPopupViewLandscape"));
  EXPECT_THAT(controllerMessages(log()), ElementsAre("viewWillTransitionToSize called"));
  settle();
  EXPECT_THAT(window()->rootNode().childNames(), ElementsAre("ZOVKPopupViewLandscape"));
  EXPECT_THAT(controllerMessages(log()),
              ElementsAre("viewWillTransitionToSize called", "did remove the viewToRemove"));
  EXPECT_EQ(memory().userInterface.liveLayouts(), 2U) << "one is held here";
}

TEST_F(Rotation, AppliesTheButtonRuleToTheFreshLayout) {
  show({webPage("ZOVKPolicy_Permission")});
  turn();
  settle();
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("aloneConfirmStackView", "centerConfirmBtn",
                                              "backgroundView", "contentView"));
}

TEST_F(Rotation, BringsBackWhatAnEarlierPopupHid) {
  ZOVKPopupModel game = webPage("game");
  game.pop_type = 2;
  show({game, webPage("a")});
  choose("skip");
  EXPECT_TRUE(layout()->view("crossBtn").hidden);
  turn();
  EXPECT_FALSE(layout()->view("crossBtn").hidden);
}

TEST_F(Rotation, ArrangesThePolicysPageAboveItsAnswersAgain) {
  show({webPage("ZOVKPolicy")});
  turn();
  settle();
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().bottom, "stackView"));
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(layout()->view("crossBtn").top, "window"));
}

TEST_F(Rotation, PlacesTheCornerButtonsOfEveryPopupsNewLayout) {
  show({webPage("a")});
  turn();
  settle();
  for (const char* button : {"crossBtn", "returnBtn"}) {
    EXPECT_TRUE(MemoryViewNode::isPinnedTo(layout()->view(button).top, "window")) << button;
  }
}

TEST_F(Rotation, OfWhichNobodyTellsArrangesThePolicysPageToo) {
  show({webPage("ZOVKPolicy")});
  controller().loadSubviews();
  settle();
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().bottom, "stackView"));
}

TEST_F(Rotation, MayComeTwiceBeforeTheFirstTransitionEnds) {
  show({webPage("a")});
  turn();
  memory().device.setOrientation(Orientation::kPortrait);
  window()->resize({1080, 1920});
  settle();
  EXPECT_THAT(window()->rootNode().childNames(), ElementsAre("ZOVKPopupView"));
  EXPECT_EQ(memory().userInterface.liveLayouts(), 1U);
  EXPECT_TRUE(page()->node().isVisible());
  EXPECT_THAT(controllerMessages(log()), Contains("did remove the viewToRemove").Times(2));
}

TEST_F(Rotation, MayBeCutShortByTheEndOfTheRun) {
  show({webPage("a")});
  turn();
  close();
  EXPECT_EQ(memory().userInterface.liveLayouts(), 0U) << "the old one does not wait for the end";
  settle();
  EXPECT_EQ(memory().userInterface.liveLayouts(), 0U);
  EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
}

TEST_F(Rotation, ButtonsOfTheNewLayoutWork) {
  show({webPage("a")});
  turn();
  settle();
  press("crossButtonClicked");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
}

}  // namespace
}  // namespace zovk
