#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kNow = 1'000'000;

class SelectionByScene : public EngineFixture {
 protected:
  SelectionByScene() {
    engine();
    memory().scheduler.setTime(kNow);
    log().clear();
  }
  PopupList select(const std::vector<ZOVKPopupModel>& popups, const std::string& scene = "lobby") {
    log().clear();
    return engine().getValidPopupForScene(scene, listOf(popups));
  }
  std::vector<std::string> debug() { return debugMessages(log()); }
  std::vector<std::string> errors() { return errorMessages(log()); }
};

TEST_F(SelectionByScene, WithoutASceneIsAnError) {
  EXPECT_THAT(select({webPage("lobby")}, ""), IsEmpty());
  EXPECT_THAT(debug(), ElementsAre("Get valid Popup, scene:, srcPopups count:1"));
  EXPECT_THAT(errors(), ElementsAre("Param scene illegal"));
}

TEST_F(SelectionByScene, OfNothingIsNoError) {
  EXPECT_THAT(select({}), IsEmpty());
  EXPECT_THAT(debug(),
              ElementsAre("Get valid Popup, scene:lobby, srcPopups count:0", "srcPopups empty"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SelectionByScene, ComparesScenesExactly) {
  EXPECT_THAT(select({webPage("Lobby"), webPage("lobby2")}), IsEmpty());
  EXPECT_THAT(debug(), Contains("Scene not same").Times(2));
  EXPECT_EQ(select({webPage("shop"), webPage("lobby")}).size(), 1U);
}

TEST_F(SelectionByScene, IgnoresTheSceneType) {
  EXPECT_EQ(select({webPage("lobby", 77)}).size(), 1U);
}

TEST_F(SelectionByScene, GivesTheFirstOfItsSceneAndNoMore) {
  ZOVKPopupModel second = webPage("lobby");
  second.priority = 9;
  const PopupList source = listOf({webPage("lobby"), second});
  EXPECT_EQ(engine().getValidPopupForScene("lobby", source), PopupList{source[0]});
}

TEST_F(SelectionByScene, GoesOnPastAnotherChannel) {
  ZOVKPopupModel other = webPage("lobby");
  other.valid_platform = "9";
  const PopupList source = listOf({other, webPage("lobby")});
  EXPECT_EQ(engine().getValidPopupForScene("lobby", source), PopupList{source[1]});
  EXPECT_THAT(errors(), ElementsAre("Invalid for channel:1"));
}

TEST_F(SelectionByScene, GoesOnPastPopupsOutsideOfTheirTime) {
  ZOVKPopupModel early = webPage("lobby");
  early.valid_time = kNow + 1;
  ZOVKPopupModel late = webPage("lobby");
  late.expire_time = kNow;
  ZOVKPopupModel inTime = webPage("lobby");
  inTime.valid_time = kNow;
  inTime.expire_time = kNow + 1;
  const PopupList source = listOf({early, late, inTime});
  EXPECT_EQ(engine().getValidPopupForScene("lobby", source), PopupList{source[2]});
  EXPECT_THAT(errors(), ElementsAre("Popup is not valid", "Popup had expired"));
}

TEST_F(SelectionByScene, GivesNothingWhenTheFirstOnesPageFileIsMissing) {
  const ZOVKPopupModel first = pageFile("lobby");
  memory().files.take(first.getPopupFilePath());
  EXPECT_THAT(select({first, webPage("lobby")}), IsEmpty());
  EXPECT_THAT(debug(),
              ElementsAre("Get valid Popup, scene:lobby, srcPopups count:2", "Content type local",
                          "File " + first.getPopupFileName() + " not exist"));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SelectionByScene, GivesNothingWhenTheFirstOnesPageFileHasAnotherDigest) {
  const ZOVKPopupModel first = pageFile("lobby");
  addCacheFile(first.getPopupFileName(), "changed");
  EXPECT_THAT(select({first, webPage("lobby")}), IsEmpty());
  EXPECT_THAT(debug(), Contains("MD5 different, config sig:" + first.sig +
                                ", file MD5:" + md5Hex("changed")));
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(SelectionByScene, GivesNothingWhenTheFirstOnesAddressHasAnotherDigest) {
  ZOVKPopupModel first = webPage("lobby");
  first.sig = "0123";
  EXPECT_THAT(select({first, webPage("lobby")}), IsEmpty());
  EXPECT_THAT(debug(), Contains("Content type remote"));
  EXPECT_THAT(errors(),
              ElementsAre("MD5 different, config sig:0123, file MD5:" + md5Hex(first.uri)));
}

TEST_F(SelectionByScene, FindsAPageFile) {
  EXPECT_EQ(select({pageFile("lobby")}).size(), 1U);
  EXPECT_THAT(debug(), Contains("Content type local"));
}

}  // namespace
}  // namespace zovk
