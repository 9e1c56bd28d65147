#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

class TearDown : public ControllerFixture {};

TEST_F(TearDown, LetsEverythingGoWithoutAnswering) {
  show({webPage("a"), webPage("b")});
  const std::weak_ptr<MemoryWebView> view = page();
  close();
  EXPECT_TRUE(view.expired());
  EXPECT_EQ(memory().userInterface.liveLayouts(), 0U);
  EXPECT_EQ(controller().currentModel(), nullptr);
  EXPECT_TRUE(controller().popupArr().empty());
  settle();
  EXPECT_TRUE(answers().empty());
}

TEST_F(TearDown, FreesAControllerThatNobodyElseHolds) {
  auto lone = makeController();
  const std::weak_ptr<ZOVKPopupViewController> weak = lone;
  lone->showPopup(listOf({webPage("a")}), window().get(), nullptr);
  settle();
  lone.reset();
  close();
  EXPECT_TRUE(weak.expired());
}

TEST_F(TearDown, LetsThePopupsThePlayerAndTheScreenGoThoughTheControllerIsHeld) {
  const auto lone = makeController();
  auto popups = listOf({webPage("a"), webPage("b")});
  const std::weak_ptr<const ZOVKPopupModel> shown = popups[0];
  const std::weak_ptr<const ZOVKPopupModel> waiting = popups[1];
  auto ownWindow = memory().userInterface.makeWindow({0, 0, 1080, 1920});
  const std::weak_ptr<MemoryViewNode> root = window()->rootNode().weak_from_this();
  const long bundleHolders = fileManager().getResourceBundle().use_count();
  lone->showPopup(popups, ownWindow.get(), recordAnswer());
  popups.clear();
  settle();
  EXPECT_GT(fileManager().getResourceBundle().use_count(), bundleHolders);
  ownWindow.reset();
  EXPECT_TRUE(shown.expired());
  EXPECT_TRUE(waiting.expired());
  EXPECT_TRUE(root.expired());
  EXPECT_EQ(fileManager().getResourceBundle().use_count(), bundleHolders);
  lone->queryConditionPopup(listOf({conditional("late")})[0]);
  EXPECT_THAT(memory().urlSession.request(0).url, ::testing::HasSubstr("game_id=&"));
}

TEST_F(TearDown, LeavesAControllerToWhoeverHoldsItsPage) {
  auto lone = makeController();
  const std::weak_ptr<ZOVKPopupViewController> weak = lone;
  lone->showPopup(listOf({webPage("a")}), window().get(), nullptr);
  settle();
  lone.reset();
  auto view = page();
  close();
  EXPECT_FALSE(weak.expired()) << "the page's message handler holds it";
  view.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(TearDown, StopsTheWebViewAndTakesItOutOfTheWindow) {
  show({webPage("a")});
  const auto view = page();
  const auto screen = layout();  // kept, so that the view does not leave the window with it
  ASSERT_TRUE(view->node().isInWindow());
  controller().tearDown();
  EXPECT_EQ(view->stopCount(), 1);
  EXPECT_FALSE(view->node().isInWindow());
  EXPECT_TRUE(screen->rootNode().isInWindow()) << "the view left, not all that is around it";
  EXPECT_TRUE(view->navigate("https://other.example/").allowed()) << "it has no delegate any more";
}

TEST_F(TearDown, BeforeTheFirstPopupIsOnScreenShowsNone) {
  controller().showPopup(listOf({webPage("a")}), window().get(), recordAnswer());
  close();
  settle();
  EXPECT_TRUE(answers().empty());
  EXPECT_FALSE(log().contains("Start show a"));
}

TEST_F(TearDown, MakesLateCallsOfEveryKindDoNothing) {
  show({webPage("a"), webPage("b")});
  const auto view = page();
  close();
  log().clear();
  view->postMessage("ZOVKPopup", boost::json::value(resultText("cancel")));
  for (const char* action : {"rejectButtonDidClicked", "confirmButtonDidClicked",
                             "returnButtonClicked", "crossButtonClicked", "refreshButtonClicked"}) {
    controller().performAction(action);
  }
  controller().handleCallbackMessage(1, "late");
  controller().updateViewConstraints();
  controller().didFinishNavigation(*view);
  controller().webContentProcessDidTerminate(*view);
  controller().createWebView(*view, {"https://late.example/", TargetFrame::kNone});
  controller().interfaceDidFail("late");
  controller().tearDown();
  std::optional<NavigationPolicy> decided;
  controller().decidePolicyForNavigationAction(*view, {webPage("a").uri, TargetFrame::kMain},
                                               [&](NavigationPolicy policy) { decided = policy; });
  settle();
  EXPECT_EQ(decided, NavigationPolicy::kCancel);
  EXPECT_EQ(view->loads().size(), 1U);
  EXPECT_TRUE(answers().empty());
  EXPECT_FALSE(log().contains("Finish show"));
}

TEST_F(TearDown, BetweenAChoiceAndTheMainQueueShowsNoOtherPopup) {
  show({webPage("a"), webPage("b")});
  const auto view = page();
  post("skip");
  close();
  settle();
  EXPECT_EQ(view->loads().size(), 1U);
  EXPECT_TRUE(answers().empty());
}

}  // namespace
}  // namespace zovk
