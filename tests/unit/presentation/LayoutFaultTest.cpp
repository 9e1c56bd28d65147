#include <algorithm>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LayoutFault : public ControllerFixture {
 protected:
  void layoutsLack(const std::vector<std::string>& missing) {
    std::vector<MemoryOutlet> outlets = standardOutlets();
    const auto lacks = [&missing](const std::string& name) {
      return std::find(missing.begin(), missing.end(), name) != missing.end();
    };
    std::erase_if(outlets, [&](const MemoryOutlet& outlet) {
      return lacks(outlet.name) || lacks(outlet.parent);
    });
    for (const char* name : {"ZOVKPopupView", "ZOVKPopupViewLandscape"}) {
      memory().userInterface.addLayout(kBundle, name, outlets);
    }
  }
  void turn(const Size& size) {
    const bool landscape = size.width > size.height;
    memory().device.setOrientation(landscape ? Orientation::kLandscapeLeft
                                             : Orientation::kPortrait);
    window()->resize(size);
    settle();
  }
  /// A run through every kind of popup, with a turn of the device; what it logs.
  std::vector<std::string> linesOfARun() {
    ZOVKPopupModel game = webPage("game");
    game.pop_type = 2;
    log().clear();
    show({webPage("ZOVKPolicy"), webPage("ZOVKPolicy_Permission"), game, webPage("lobby")});
    turn({1920, 1080});
    choose("skip");
    page()->finish();
    choose("skip");
    choose("skip");
    turn({1080, 1920});
    choose("skip");
    EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
    EXPECT_THAT(errorMessages(log()), IsEmpty());
    return controllerMessages(log());
  }
  static auto isTheUsualLog() {
    return ElementsAre("Popup count:4", "Start show ZOVKPolicy", "viewWillTransitionToSize called",
                       "did remove the viewToRemove", "Finish show ZOVKPolicy",
                       "Start show ZOVKPolicy_Permission", "Did finish navigation",
                       "Finish show ZOVKPolicy_Permission", "Start show game", "Finish show game",
                       "Start show lobby", "viewWillTransitionToSize called",
                       "did remove the viewToRemove", "Finish show lobby");
  }
};

TEST_F(LayoutFault, NoneLogsARunLikeThis) {
  EXPECT_THAT(linesOfARun(), isTheUsualLog());
}

TEST_F(LayoutFault, NoLayoutAtAllLogsNoLineMoreOrLess) {
  memory().userInterface.missingLayout("ZOVKPopupView");
  memory().userInterface.missingLayout("ZOVKPopupViewLandscape");
  EXPECT_THAT(linesOfARun(), isTheUsualLog());
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1U);
}

TEST_F(LayoutFault, NoBundleAtAllLogsNoLineMoreOrLess) {
  memory().bundles.removeResourceBundle();
  ZOVKPopupFileManager::purgeSharedInstance();
  EXPECT_THAT(linesOfARun(), isTheUsualLog());
}

TEST_F(LayoutFault, OneOrientationMissingComesBackWithTheOther) {
  memory().userInterface.missingLayout("ZOVKPopupViewLandscape");
  show({webPage("lobby")});
  turn({1920, 1080});
  EXPECT_THAT(window()->rootNode().childNames(), IsEmpty());
  turn({1080, 1920});
  EXPECT_THAT(window()->rootNode().childNames(), ElementsAre("ZOVKPopupView"));
  EXPECT_TRUE(page()->node().isVisible());
  EXPECT_FALSE(layout()->view("crossBtn").hidden);
  EXPECT_EQ(memory().userInterface.liveLayouts(), 1U);
}

class LackingOutlet : public LayoutFault, public ::testing::WithParamInterface<MemoryOutlet> {};

TEST_P(LackingOutlet, LogsNoLineMoreOrLess) {
  layoutsLack({GetParam().name});
  EXPECT_THAT(linesOfARun(), isTheUsualLog());
}

INSTANTIATE_TEST_SUITE_P(LayoutFault, LackingOutlet, ::testing::ValuesIn(standardOutlets()),
                         [](const auto& test) { return test.param.name; });

TEST_F(LayoutFault, NeitherGroupOfAnswersLeavesThePageItsWholeHeight) {
  layoutsLack({"stackView", "aloneConfirmStackView"});
  show({webPage("ZOVKPolicy")});
  EXPECT_EQ(page()->node().bottom, std::nullopt);
}

TEST_F(LayoutFault, NothingButARootLogsNoLineMoreOrLess) {
  memory().userInterface.addLayout(kBundle, "ZOVKPopupView", {});
  memory().userInterface.addLayout(kBundle, "ZOVKPopupViewLandscape", {});
  EXPECT_THAT(linesOfARun(), isTheUsualLog());
}

}  // namespace
}  // namespace zovk
