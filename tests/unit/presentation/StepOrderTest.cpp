#include "unit/presentation/OrderFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

constexpr const char* kRecord =
    "/home/player/Library/Caches/ZOVKPopup/ZOVKPopupFrequencyOnce.config";

// What a game's callback, the log, the page and the record see of the order of a popup's steps.
class StepOrder : public OrderFixture {
 protected:
  static ZOVKPopupModel reported(const std::string& scene) {
    ZOVKPopupModel popup = webPage(scene);
    popup.report_url = "https://report.example/" + scene;
    return popup;
  }
};

TEST_F(StepOrder, ACommitIsReportedThenLoggedThenToldThenFinished) {
  showMarked({reported("a")});
  choose("commit");
  EXPECT_THAT(
      order({"Start request", "the num of popupCache is 0", "told 1", "Finish show a"}),
      ElementsAre("Start request", "the num of popupCache is 0", "told 1", "Finish show a"));
}

TEST_F(StepOrder, ACommitBeforeOthersIsReportedThenLoggedThenFinished) {
  showMarked({reported("a"), webPage("b")});
  choose("commit");
  EXPECT_THAT(
      order(
          {"Start request", "the num of popupCache is 1", "told", "Finish show a", "Start show b"}),
      ElementsAre("Start request", "the num of popupCache is 1", "Finish show a", "Start show b"));
}

TEST_F(StepOrder, ACommitWithoutAReportAddressIsLoggedThenTold) {
  showMarked({webPage("a")});
  choose("commit");
  EXPECT_THAT(order({"report_url is illegal", "told -1", "Finish show", "Start request"}),
              ElementsAre("report_url is illegal", "told -1"));
}

TEST_F(StepOrder, ASkipIsToldBeforeThePopupIsFinished) {
  showMarked({webPage("a")});
  choose("skip");
  EXPECT_THAT(order({"told 0", "Finish show a"}), ElementsAre("told 0", "Finish show a"));
}

TEST_F(StepOrder, ACancelIsLoggedThenToldThenFinished) {
  showMarked({webPage("a"), webPage("b")});
  choose("cancel");
  EXPECT_THAT(order({"the user operation is: 2", "told 2", "Finish show a", "Start show b"}),
              ElementsAre("the user operation is: 2", "told 2", "Finish show a", "Start show b"));
}

TEST_F(StepOrder, ThePopupOnScreenChangesBehindItsLineAndBeforeItsPage) {
  std::string onScreenThen = "none yet";
  whenLogged("Start show a", [&] { onScreenThen = sceneOnScreen(); });
  std::string whileLoading;
  whenLogged("webView will loadRequest", [&] { whileLoading = sceneOnScreen(); });
  show({webPage("a")});
  EXPECT_EQ(onScreenThen, "");
  EXPECT_EQ(whileLoading, "a");
}

TEST_F(StepOrder, AWebPagesAddressIsLoggedBeforeItIsLoaded) {
  std::vector<std::size_t> loadsThen;
  whenLogged("webView will loadRequest", [&] { loadsThen.push_back(page()->loads().size()); });
  show({webPage("a")});
  EXPECT_THAT(loadsThen, ElementsAre(0U));
  EXPECT_EQ(page()->loads().size(), 1U);
}

TEST_F(StepOrder, TheEndOfAPopupIsLoggedBeforeItIsRecordedAndTheNextComesAfterwards) {
  ZOVKPopupModel once = webPage("a");
  once.pop_freq = 1;
  show({once, webPage("b")});
  bool recordedAtTheEnd = true;
  bool recordedBeforeTheNext = false;
  whenLogged("Finish show a", [&] { recordedAtTheEnd = memory().files.text(kRecord).has_value(); });
  whenLogged("Start show b",
             [&] { recordedBeforeTheNext = memory().files.text(kRecord).has_value(); });
  choose("skip");
  EXPECT_FALSE(recordedAtTheEnd);
  EXPECT_TRUE(recordedBeforeTheNext);
}

TEST_F(StepOrder, AConditionIsAskedWhenTheButtonsAreSet) {
  bool hiddenThen = false;
  whenLogged("Query condition Popup", [&] { hiddenThen = layout()->view("returnBtn").hidden; });
  show({conditional("asked")});
  EXPECT_TRUE(hiddenThen);
  EXPECT_THAT(order({"Start show asked", "Query condition Popup", "Start request"}),
              ElementsAre("Start show asked", "Query condition Popup", "Start request"));
}

TEST_F(StepOrder, ThePopupsAreCountedBeforeTheWindowTakesThem) {
  bool takenThen = true;
  whenLogged("Popup count:1", [&] { takenThen = window()->rootViewController() != nullptr; });
  show({webPage("a")});
  EXPECT_FALSE(takenThen);
  EXPECT_NE(window()->rootViewController(), nullptr);
}

TEST_F(StepOrder, AConditionsAnswerIsLoggedStepByStep) {
  showMarked({conditional("asked"), webPage("next")});
  memory().urlSession.answer("check.example", 200, R"({"need_popup":0})");
  settle();
  EXPECT_THAT(order({"Query condition Popup result:1", "Query condition Popup request success",
                     "No need to show condition Popup", "Start show next"}),
              ElementsAre("Query condition Popup result:1", "Query condition Popup request success",
                          "No need to show condition Popup", "Start show next"));
}

TEST_F(StepOrder, AConditionsFailureIsLoggedBeforeTheNextPopup) {
  showMarked({conditional("asked"), webPage("next")});
  memory().urlSession.fail("check.example", "no network");
  settle();
  EXPECT_THAT(order({"Query condition Popup result:0",
                     "[Error] Query condition Popup request failed", "Start show next"}),
              ElementsAre("Query condition Popup result:0",
                          "[Error] Query condition Popup request failed", "Start show next"));
}

TEST_F(StepOrder, AReportsAnswerIsLoggedStepByStep) {
  showMarked({reported("a")});
  choose("commit");
  log().clear();
  memory().urlSession.answer("report.example", 200, "{}");
  settle();
  EXPECT_THAT(order({"Report user data result:1", "Report user data request"}),
              ElementsAre("Report user data result:1", "Report user data request"));
}

TEST_F(StepOrder, ATurnIsLoggedBeforeItsLayoutIsLoadedAndAfterTheOldOneIsGone) {
  show({webPage("a")});
  std::vector<std::string> atTheBeginning;
  std::vector<std::string> atTheEnd;
  whenLogged("viewWillTransitionToSize called",
             [&] { atTheBeginning = window()->rootNode().childNames(); });
  whenLogged("did remove the viewToRemove", [&] { atTheEnd = window()->rootNode().childNames(); });
  memory().device.setOrientation(Orientation::kLandscapeLeft);
  window()->resize({1920, 1080});
  settle();
  EXPECT_THAT(atTheBeginning, ElementsAre("ZOVKPopupView"));
  EXPECT_THAT(atTheEnd, ElementsAre("ZOVKPopupViewLandscape"));
}

TEST_F(StepOrder, AFinishedPageIsLoggedBeforeTheDimmingIsLifted) {
  ZOVKPopupModel game = webPage("a");
  game.pop_type = 2;
  show({game});
  std::optional<Color> then;
  whenLogged("Did finish navigation", [&] { then = layout()->view("contentView").background; });
  page()->finish();
  EXPECT_EQ(then, Color::black(0.5));
  EXPECT_EQ(layout()->view("contentView").background, Color::black(0));
}

}  // namespace
}  // namespace zovk
