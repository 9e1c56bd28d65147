#include "fixtures/EngineFixture.h"
#include "fixtures/LineWatch.h"
#include "fixtures/LogLines.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::StartsWith;

class DisplayRequest : public EngineFixture {
 protected:
  DisplayRequest() { engine(); }
};

TEST_F(DisplayRequest, WithNothingValidForASceneIsAnsweredAtOnce) {
  engine().setMergePopupArr(listOf({webPage("shop")}));
  engine().showPopup("lobby", 3, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  EXPECT_THAT(debugMessages(log()), Contains("No valid Popup for scene:lobby sceneType:3"));
  settle();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(DisplayRequest, WithNothingValidForASceneTypeIsAnsweredAtOnce) {
  engine().showPopup("", 3, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  EXPECT_THAT(debugMessages(log()), Contains("No valid Popup for scene: sceneType:3"));
}

TEST_F(DisplayRequest, WithNothingValidIsLoggedBeforeItIsAnsweredOnTheCallersThread) {
  engine().setMergePopupArr(listOf({webPage("shop")}));
  log().clear();
  std::vector<std::string> before;
  engine().showPopup("lobby", 3,
                     [&](std::int32_t, const std::string&) { before = debugMessages(log()); });
  EXPECT_THAT(before, ElementsAre(StartsWith("Show Popup, scene:lobby, sceneType:3, complete:0x"),
                                  "Get valid Popup, scene:lobby, srcPopups count:1",
                                  "Scene not same", "No valid Popup for scene:lobby sceneType:3"));
  EXPECT_EQ(debugMessages(log()), before) << "not by way of a queued result";
}

TEST_F(DisplayRequest, WithNeitherASceneNorASceneTypeGoesBySceneTypeZero) {
  engine().setMergePopupArr(listOf({webPage("shop", 1), webPage("lobby", 0)}));
  engine().showPopup("", 0, recordAnswer());
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("lobby").uri);
}

TEST_F(DisplayRequest, WithNeitherASceneNorASceneTypeNorAPopupIsAnError) {
  log().clear();
  engine().showPopup("", 0, nullptr);
  EXPECT_THAT(
      shortLines(log()),
      ElementsAre("D showPopup: Show Popup, scene:, sceneType:0, complete:(nil)",
                  "D getValidPopupForSceneType: Get valid Popup, sceneType:0, srcPopups count:0",
                  "E srcPopups empty", "D showPopup: No valid Popup for scene: sceneType:0"));
}

TEST_F(DisplayRequest, WithNothingValidAndNoCallbackIsOnlyLogged) {
  engine().showPopup("lobby", 3, nullptr);
  EXPECT_THAT(debugMessages(log()), Contains("No valid Popup for scene:lobby sceneType:3"));
}

TEST_F(DisplayRequest, WithASceneIgnoresTheSceneType) {
  engine().setMergePopupArr(listOf({webPage("shop", 1), webPage("lobby", 2)}));
  engine().showPopup("lobby", 1, recordAnswer());
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("lobby").uri);
}

TEST_F(DisplayRequest, WithoutASceneGoesByTheSceneType) {
  engine().setMergePopupArr(listOf({webPage("shop", 1), webPage("lobby", 2)}));
  engine().showPopup("", 1, recordAnswer());
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("shop").uri);
}

TEST_F(DisplayRequest, ForASceneTypeShowsEveryPopupBestFirst) {
  ZOVKPopupModel low = webPage("low");
  ZOVKPopupModel high = webPage("high");
  high.priority = 5;
  engine().setMergePopupArr(listOf({low, high}));
  engine().showPopup("", 1, recordAnswer());
  settle();
  EXPECT_EQ(page()->lastLoad(), high.uri);
  choose("skip", "one");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(page()->lastLoad(), low.uri);
  choose("skip", "two");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "two")}}));
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1U) << "one web view for the whole run";
}

TEST_F(DisplayRequest, WorksOnTheListOfItsMoment) {
  engine().setMergePopupArr(listOf({webPage("shop"), webPage("shop2"), webPage("lobby")}));
  const LineWatch merged(memory(), "Scene not same",
                         [this] { engine().setMergePopupArr(listOf({webPage("other")})); });
  engine().showPopup("lobby", 0, recordAnswer());
  settle();
  ASSERT_NE(page(), nullptr) << "the list was replaced in the middle of the walk";
  EXPECT_EQ(page()->lastLoad(), webPage("lobby").uri);
}

TEST_F(DisplayRequest, TakesTheScreenOnTheCallingThreadAndShowsFromTheMainQueue) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  engine().showPopup("lobby", 0, recordAnswer());
  EXPECT_TRUE(engine().isPopuping());
  EXPECT_EQ(engine().window(), nullptr);
  settle();
  EXPECT_NE(engine().window(), nullptr);
  EXPECT_NE(engine().timer(), nullptr);
}

TEST_F(DisplayRequest, GivesThePageTheGameAndThePlayer) {
  engine().startPopup("https://service.example", "1001", "secret");
  engine().setChannelID(7, "open", "token", "jwt");
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  engine().showPopup("lobby", 0, recordAnswer());
  settle();
  EXPECT_THAT(controllerMessages(log()),
              Contains("Set state ID1:1001 ID2:secret ID3:7 ID4:open ID5:token, ID6:jwt"));
}

TEST_F(DisplayRequest, LogsEachStepFromTheRequestToTheEnd) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  log().clear();
  engine().showPopup("lobby", 0, nullptr);
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Show Popup, scene:lobby, sceneType:0, complete:(nil)",
                          "Get valid Popup, scene:lobby, srcPopups count:1", "Content type remote",
                          "Cache Popup, Popup count:1, complete:(nil)", "complete is NULL",
                          "Cache callback done", "Show Popup", "Get Popup from cache"));
  log().clear();
  settle();
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Init Popup window", "Start show Popup", "Start check key window",
                          "Make Popup to key window"));
  log().clear();
  choose("skip");
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Show Popup done", "Show Popup", "Get Popup from cache",
                          "No Popup to show", "Stop check key window", "Release Popup window"));
}

}  // namespace
}  // namespace zovk
