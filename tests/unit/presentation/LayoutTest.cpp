#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PageLayout : public ControllerFixture {
 protected:
  MemoryViewNode& view(const std::string& name) { return layout()->view(name); }
  std::string nibFor(Orientation device, Orientation statusBar) {
    memory().device.setOrientation(device);
    memory().device.setStatusBarOrientation(statusBar);
    return controller().getNibFileName();
  }
};

TEST_F(PageLayout, FollowsTheDeviceThenTheStatusBar) {
  const std::string portrait = "ZOVKPopupView";
  const std::string landscape = "ZOVKPopupViewLandscape";
  using O = Orientation;
  for (const O bar : {O::kUnknown, O::kPortrait, O::kLandscapeLeft}) {
    EXPECT_EQ(nibFor(O::kPortrait, bar), portrait);
    EXPECT_EQ(nibFor(O::kPortraitUpsideDown, bar), portrait);
    EXPECT_EQ(nibFor(O::kLandscapeLeft, bar), landscape);
    EXPECT_EQ(nibFor(O::kLandscapeRight, bar), landscape);
  }
  for (const O device : {O::kUnknown, O::kFaceUp, O::kFaceDown}) {
    EXPECT_EQ(nibFor(device, O::kPortrait), portrait);
    EXPECT_EQ(nibFor(device, O::kPortraitUpsideDown), portrait);
    EXPECT_EQ(nibFor(device, O::kLandscapeLeft), landscape);
    EXPECT_EQ(nibFor(device, O::kLandscapeRight), landscape);
    EXPECT_EQ(nibFor(device, O::kUnknown), landscape);
  }
}

TEST_F(PageLayout, OfADeviceOnATableGoesByTheStatusBar) {
  memory().device.setOrientation(Orientation::kFaceUp);
  memory().device.setStatusBarOrientation(Orientation::kLandscapeRight);
  show({webPage("a")});
  EXPECT_EQ(layout()->name(), "ZOVKPopupViewLandscape");
  EXPECT_EQ(layout()->bundlePath(), kBundle);
}

TEST_F(PageLayout, MayBeHeldInAllFourWaysAndKeepsTheSystemsGesturesOffItsEdges) {
  EXPECT_EQ(controller().supportedInterfaceOrientations(), 30U);
  EXPECT_EQ(controller().preferredScreenEdgesDeferringSystemGestures(), 15U);
}

TEST_F(PageLayout, FillsTheWindow) {
  show({webPage("a")});
  EXPECT_THAT(window()->rootNode().childNames(), ElementsAre("ZOVKPopupView"));
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(layout()->rootNode().edges, "window"));
}

TEST_F(PageLayout, HoldsTheWebViewBehindTheButtons) {
  show({webPage("a")});
  EXPECT_THAT(view("contentView").childNames(),
              ElementsAre("web", "returnBtn", "crossBtn", "refreshBtn"));
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().edges, "contentView"));
  EXPECT_TRUE(view("contentView").clips);
}

TEST_F(PageLayout, GivesThreeButtonsTheirImages) {
  show({webPage("a")});
  EXPECT_EQ(view("refreshBtn").image, std::string(kBundle) + "/refresh.png");
  EXPECT_EQ(view("returnBtn").image, std::string(kBundle) + "/returnNew.png");
  EXPECT_EQ(view("crossBtn").image, std::string(kBundle) + "/close.png");
  EXPECT_EQ(view("confirmBtn").image, "");
}

TEST_F(PageLayout, PutsTheCornerButtonsBelowTheSafeAreaOnNewSystems) {
  memory().device.setSystemMajorVersion(11);
  show({webPage("a")});
  for (const char* button : {"crossBtn", "returnBtn"}) {
    const auto& pin = view(button).top;
    ASSERT_TRUE(MemoryViewNode::isPinnedTo(pin, "window")) << button;
    EXPECT_TRUE(pin->safeArea);
    EXPECT_EQ(pin->offset, 0);
  }
}

TEST_F(PageLayout, PutsTheCornerButtonsBelowTheTopOnOldSystems) {
  memory().device.setSystemMajorVersion(10);
  show({webPage("a")});
  for (const char* button : {"crossBtn", "returnBtn"}) {
    const auto& pin = view(button).top;
    ASSERT_TRUE(MemoryViewNode::isPinnedTo(pin, "window")) << button;
    EXPECT_FALSE(pin->safeArea);
    EXPECT_EQ(pin->offset, 44);
  }
}

TEST_F(PageLayout, EndsThePolicysPageAboveItsAnswers) {
  show({webPage("ZOVKPolicy")});
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().bottom, "stackView"));
}

TEST_F(PageLayout, EndsThePageOfAPolicyThatComesLaterAboveItsAnswersToo) {
  show({webPage("a"), webPage("ZOVKPolicy")});
  choose("skip");
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().bottom, "stackView"));
}

TEST_F(PageLayout, EndsThePermissionsPageAboveTheFirstGroupOfAnswersThatIsThere) {
  memory().userInterface.addLayout(kBundle, "ZOVKPopupView",
                                   {{"contentView", ""}, {"aloneConfirmStackView", ""}});
  show({webPage("ZOVKPolicy_Permission")});
  EXPECT_TRUE(MemoryViewNode::isPinnedTo(page()->node().bottom, "aloneConfirmStackView"));
}

TEST_F(PageLayout, LetsAnyOtherPageFillTheContent) {
  show({webPage("a")});
  EXPECT_EQ(page()->node().bottom, std::nullopt);
}

TEST_F(PageLayout, ThatIsMissingLeavesARunWithoutViews) {
  memory().userInterface.missingLayout("ZOVKPopupView");
  log().clear();
  show({webPage("a"), webPage("ZOVKPolicy")});
  EXPECT_THAT(window()->rootNode().childNames(), IsEmpty());
  EXPECT_THAT(errorMessages(log()), IsEmpty());
  choose("skip");
  page()->finish();
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(PageLayout, WithoutAResourceBundleRunsAllTheSame) {
  memory().bundles.removeResourceBundle();
  ZOVKPopupFileManager::purgeSharedInstance();
  show({webPage("a")});
  EXPECT_EQ(layout()->bundlePath(), "");
  EXPECT_EQ(view("crossBtn").image, "");
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(PageLayout, SetsTheWebViewUpAsPagesNeedIt) {
  show({webPage("a")});
  const WebViewConfiguration& made = page()->configuration();
  EXPECT_TRUE(made.allowsInlineMediaPlayback);
  EXPECT_TRUE(made.prefersMobileContent);
  EXPECT_TRUE(made.bounces);
  EXPECT_FALSE(made.showsVerticalScrollIndicator);
  EXPECT_FALSE(made.adjustsContentInset);
  EXPECT_FALSE(made.opaque);
  EXPECT_EQ(page()->node().background, Color::clear());
  ASSERT_EQ(made.scriptMessageHandlers.size(), 2U);
  EXPECT_EQ(made.scriptMessageHandlers.at("ZOVKPopup"),
            made.scriptMessageHandlers.at("__qvOpenSdk"));
}

}  // namespace
}  // namespace zovk
