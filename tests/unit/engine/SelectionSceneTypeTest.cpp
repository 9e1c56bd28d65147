#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kNow = 1'000'000;

class SelectionBySceneType : public EngineFixture {
 protected:
  SelectionBySceneType() {
    engine();
    memory().scheduler.setTime(kNow);
    log().clear();
  }
  bool isValid(const ZOVKPopupModel& popup, std::uint64_t sceneType = 1) {
    log().clear();
    return !engine().getValidPopupForSceneType(sceneType, listOf({popup})).empty();
  }
  std::vector<std::string> debug() { return debugMessages(log()); }
  std::vector<std::string> errors() { return errorMessages(log()); }
};

TEST_F(SelectionBySceneType, OfNothingIsAnErrorAndNothing) {
  EXPECT_TRUE(engine().getValidPopupForSceneType(1, {}).empty());
  EXPECT_THAT(debug(), ElementsAre("Get valid Popup, sceneType:1, srcPopups count:0"));
  EXPECT_THAT(errors(), ElementsAre("srcPopups empty"));
}

TEST_F(SelectionBySceneType, LogsEveryCandidate) {
  EXPECT_TRUE(isValid(webPage("a")));
  EXPECT_THAT(debug(), ElementsAre("Get valid Popup, sceneType:1, srcPopups count:1",
                                   "Popup fileName:, sceneType:1, contentType:3, frequency:2",
                                   "Content type remote"));
  const ZOVKPopupModel file = pageFile("b");
  EXPECT_TRUE(isValid(file));
  EXPECT_THAT(debug(), ElementsAre("Get valid Popup, sceneType:1, srcPopups count:1",
                                   "Popup fileName:" + file.getPopupFileName() +
                                       ", sceneType:1, contentType:1, frequency:2",
                                   "Content type local"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SelectionBySceneType, PassesOverAnotherSceneType) {
  EXPECT_FALSE(isValid(webPage("a", 2)));
  EXPECT_THAT(debug(), Contains("SceneType not same"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SelectionBySceneType, ComparesTheLowBitsOfSceneTypesOnly) {
  constexpr std::uint64_t kHighBit = std::uint64_t{1} << 32U;
  EXPECT_TRUE(isValid(webPage("a", 5), kHighBit + 5));
  EXPECT_TRUE(isValid(webPage("a", kHighBit + 5), 5));
  EXPECT_FALSE(isValid(webPage("a", kHighBit), 1));
}

TEST_F(SelectionBySceneType, MatchesChannelsBySubstring) {
  ZOVKPopupModel popup = webPage("a");
  popup.valid_platform = "12";
  for (const std::int32_t channel : {1, 2, 12}) {
    engine().setChannelID(channel, "", "", "");
    EXPECT_TRUE(isValid(popup)) << channel;
  }
  engine().setChannelID(3, "", "", "");
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(debug(), Contains("Invalid for channel:3"));
  EXPECT_THAT(errors(), IsEmpty());
  popup.valid_platform = "";
  EXPECT_TRUE(isValid(popup)) << "an empty list is meant for all";
}

TEST_F(SelectionBySceneType, AcceptsFromTheStartOfTheValidityOn) {
  ZOVKPopupModel popup = webPage("a");
  for (const std::int32_t start : {0, kNow - 1, kNow}) {
    popup.valid_time = start;
    EXPECT_TRUE(isValid(popup)) << start;
  }
  popup.valid_time = kNow + 1;
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(errors(), ElementsAre("Popup is not valid"));
}

TEST_F(SelectionBySceneType, RejectsFromTheEndOfTheValidityOn) {
  ZOVKPopupModel popup = webPage("a");
  for (const std::int32_t end : {0, kNow + 1}) {
    popup.expire_time = end;
    EXPECT_TRUE(isValid(popup)) << end;
  }
  for (const std::int32_t end : {kNow, kNow - 1}) {
    popup.expire_time = end;
    EXPECT_FALSE(isValid(popup)) << end;
    EXPECT_THAT(errors(), ElementsAre("Popup is expired"));
  }
}

TEST_F(SelectionBySceneType, ComparesTimesWithTheClocksFraction) {
  memory().scheduler.setTime(kNow - 0.5);
  ZOVKPopupModel popup = webPage("a");
  popup.valid_time = kNow;
  EXPECT_FALSE(isValid(popup));
  popup.valid_time = 0;
  popup.expire_time = kNow;
  EXPECT_TRUE(isValid(popup));
}

TEST_F(SelectionBySceneType, StopsAtTheFirstTestThatFails) {
  ZOVKPopupModel popup = webPage("a", 2);
  popup.valid_platform = "9";
  popup.valid_time = kNow + 1;
  popup.expire_time = kNow;
  popup.sig = "wrong";
  EXPECT_FALSE(isValid(popup, 1));
  EXPECT_THAT(debug(), Contains("SceneType not same"));
  EXPECT_FALSE(isValid(popup, 2));
  EXPECT_THAT(debug(), Contains("Invalid for channel:1"));
  popup.valid_platform = "";
  EXPECT_FALSE(isValid(popup, 2));
  EXPECT_THAT(errors(), ElementsAre("Popup is not valid"));
  popup.valid_time = 0;
  EXPECT_FALSE(isValid(popup, 2));
  EXPECT_THAT(errors(), ElementsAre("Popup is expired"));
}

TEST_F(SelectionBySceneType, RejectsAWebPageWhoseAddressHasAnotherDigest) {
  ZOVKPopupModel popup = webPage("a");
  popup.sig = "0123";
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(errors(),
              ElementsAre("MD5 different, config sig:0123, file MD5:" + md5Hex(popup.uri)));
}

TEST_F(SelectionBySceneType, TakesEveryContentTypeButOneAndTwoForAWebPage) {
  for (const std::uint64_t type : {0U, 3U, 4U}) {
    ZOVKPopupModel popup = webPage("a");
    popup.content_type = type;
    EXPECT_TRUE(isValid(popup)) << type;
    EXPECT_THAT(debug(), Contains("Content type remote"));
  }
}

TEST_F(SelectionBySceneType, RejectsAPageFileThatIsNotThere) {
  const ZOVKPopupModel popup = pageFile("a");
  memory().files.take(popup.getPopupFilePath());
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(errors(), ElementsAre("File " + popup.getPopupFileName() + " not exist"));
}

TEST_F(SelectionBySceneType, RejectsAPageFileWithAnotherDigest) {
  const ZOVKPopupModel popup = pageFile("a");
  addCacheFile(popup.getPopupFileName(), "changed");
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(errors(), ElementsAre("MD5 different, config sig:" + popup.sig +
                                    ", file MD5:" + md5Hex("changed")));
}

TEST_F(SelectionBySceneType, FindsALocalPopupsPageInTheResourceBundle) {
  ZOVKPopupModel popup = pageFile("a");
  popup.config_type = 1;
  popup.content_type = 2;
  EXPECT_FALSE(isValid(popup));
  addResource(popup.getPopupFileName(), "page of a");
  EXPECT_TRUE(isValid(popup));
}

TEST_F(SelectionBySceneType, ExaminesEveryCandidateAndKeepsTheValidOnes) {
  ZOVKPopupModel wrong = webPage("b");
  wrong.sig = "wrong";
  const PopupList source = listOf({webPage("a"), wrong, webPage("c", 2), webPage("d")});
  const PopupList valid = engine().getValidPopupForSceneType(1, source);
  EXPECT_EQ(valid, (PopupList{source[3], source[0]}));
}

TEST_F(SelectionBySceneType, TellsTheHostWhetherThereIsAPopup) {
  engine().setMergePopupArr(listOf({webPage("a", 4)}));
  EXPECT_TRUE(engine().havePopup(4));
  EXPECT_EQ(debug().front(), "sceneType:4");
  EXPECT_EQ(debug().back(), "Have Popup for sceneType:4");
  log().clear();
  EXPECT_FALSE(engine().havePopup(5));
  EXPECT_EQ(debug().front(), "sceneType:5");
  EXPECT_EQ(debug().back(), "No Popup for sceneType:5");
}

TEST_F(SelectionBySceneType, CountsAConditionalPopupWithoutAskingItsService) {
  engine().setMergePopupArr(listOf({conditional("a", 4)}));
  EXPECT_TRUE(engine().havePopup(4));
  EXPECT_EQ(memory().urlSession.createdCount(), 0U);
}

}  // namespace
}  // namespace zovk
