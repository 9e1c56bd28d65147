#include "ExplainFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

// Rules that both selections know, with the values that were compared.
class ExplainVerdict : public ExplainFixture {};

TEST_F(ExplainVerdict, NamesThePopupThatItIsAbout) {
  ZOVKPopupModel web = webPage("lobby");
  web.pop_id = 7;
  const ZOVKPopupExplainedPopup popup = byScene(web);
  EXPECT_EQ(popup.scene, "lobby");
  EXPECT_EQ(popup.pop_id, 7);
  EXPECT_EQ(popup.page, web.uri);
  const ZOVKPopupModel file = pageFile("lobby");
  EXPECT_EQ(byScene(file).page, file.getPopupFileName());
}

TEST_F(ExplainVerdict, PassedComparesNothing) {
  for (const auto& popup : {byScene(webPage("lobby")), byType(webPage("lobby"))}) {
    EXPECT_THAT(compared(popup), ElementsAre("passed", "", ""));
    EXPECT_EQ(popup.sentence, "It passes every rule.");
    EXPECT_EQ(popup.rank, 1U);
  }
}

TEST_F(ExplainVerdict, PassedSaysThatAConditionIsStillToBeAsked) {
  const ZOVKPopupExplainedPopup popup = byScene(conditional("lobby"));
  EXPECT_EQ(popup.verdict, "passed");
  EXPECT_EQ(popup.sentence,
            "It passes every rule, but is conditional: the service at "
            "\"https://check.example/lobby\" is asked before it is shown, and may say no.");
}

TEST_F(ExplainVerdict, OtherSceneTellsBothScenes) {
  const ZOVKPopupExplainedPopup popup = byScene(webPage("shop"));
  EXPECT_THAT(compared(popup), ElementsAre("other_scene", "shop", "lobby"));
  EXPECT_EQ(popup.sentence, R"(It belongs to the scene "shop"; asked for is "lobby".)");
  EXPECT_EQ(popup.rank, 0U);
}

TEST_F(ExplainVerdict, OtherSceneTypeTellsWhatIsComparedOfBoth) {
  const ZOVKPopupExplainedPopup popup = byType(webPage("a", (std::uint64_t{1} << 32U) + 2));
  EXPECT_THAT(compared(popup), ElementsAre("other_scene_type", "2", "1"));
  EXPECT_EQ(popup.sentence, "Its scene type is 2; asked for is 1.");
}

TEST_F(ExplainVerdict, OtherChannelTellsTheListAndThePlayersChannel) {
  ZOVKPopupModel model = webPage("lobby");
  model.valid_platform = "2,9";
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("other_channel", "2,9", "1"));
    EXPECT_EQ(popup.sentence, R"(It is for the login channels "2,9"; the player's channel is 1.)");
  }
}

TEST_F(ExplainVerdict, NotYetValidTellsTheStartAndNow) {
  ZOVKPopupModel model = webPage("lobby");
  model.valid_time = kNow + 60;
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("not_yet_valid", "1000060", "1000000"));
    EXPECT_EQ(popup.sentence,
              "It is valid from 1000060 (1970-01-12 13:47:40 UTC) on; now it is 1000000 "
              "(1970-01-12 13:46:40 UTC).");
  }
}

TEST_F(ExplainVerdict, ExpiredTellsTheEndAndNowWithItsFraction) {
  memory().scheduler.setTime(kNow + 0.5);
  ZOVKPopupModel model = webPage("lobby");
  model.expire_time = kNow;
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("expired", "1000000", "1000000.5"));
    EXPECT_EQ(popup.sentence,
              "It expired at 1000000 (1970-01-12 13:46:40 UTC); now it is 1000000.5 "
              "(1970-01-12 13:46:40 UTC).");
  }
}

TEST_F(ExplainVerdict, ATimeBeforeTheEpochIsToldAsANumber) {
  ZOVKPopupModel model = webPage("lobby");
  model.expire_time = -5;
  EXPECT_EQ(byScene(model).sentence,
            "It expired at -5; now it is 1000000 (1970-01-12 13:46:40 UTC).");
}

TEST_F(ExplainVerdict, FileMissingTellsThePath) {
  const ZOVKPopupModel model = pageFile("lobby");
  const std::string path = model.getPopupFilePath();
  memory().files.take(path);
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("file_missing", path, ""));
    EXPECT_EQ(popup.sentence, "There is no page file at " + path + ".");
  }
}

TEST_F(ExplainVerdict, FileMissingWithoutAPlaceSaysSo) {
  ZOVKPopupModel model = pageFile("lobby");
  model.config_type = 5;
  EXPECT_THAT(compared(byScene(model)), ElementsAre("file_missing", "", ""));
  EXPECT_EQ(byScene(model).sentence, "Its page file has no place to be in.");
}

TEST_F(ExplainVerdict, AlreadyShownTellsTheKeyAndCountsByTypeOnly) {
  const ZOVKPopupModel model = pageFile("lobby");
  addCacheFile(kOnceRecordFile, model.sig + ",");
  const ZOVKPopupExplainedPopup popup = byType(model);
  EXPECT_THAT(compared(popup), ElementsAre("already_shown", "", model.sig));
  EXPECT_EQ(popup.sentence,
            "It was shown before: ZOVKPopupFrequencyOnce.config holds its key " + model.sig + ".");
  EXPECT_EQ(byScene(model).verdict, "passed");
}

TEST_F(ExplainVerdict, DigestDiffersTellsBothDigestsOfAPageFile) {
  const ZOVKPopupModel model = pageFile("lobby");
  addCacheFile(model.getPopupFileName(), "changed");
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("digest_differs", model.sig, md5Hex("changed")));
    EXPECT_EQ(popup.sentence, "Its sig is \"" + model.sig +
                                  "\", but the MD5 of its page file is \"" + md5Hex("changed") +
                                  "\".");
  }
}

TEST_F(ExplainVerdict, DigestDiffersSaysThatOneIsMissing) {
  ZOVKPopupModel web = webPage("lobby");
  web.sig = "";
  web.uri = "";
  ZOVKPopupModel file = pageFile("lobby");
  file.sig = "";
  addCacheFile(file.getPopupFileName(), "page");
  memory().files.failReads(file.getPopupFilePath());
  for (const auto& popup : {byScene(web), byType(web)}) {
    EXPECT_THAT(compared(popup), ElementsAre("digest_differs", "", ""));
    EXPECT_EQ(popup.sentence,
              "Its sig is missing, but the MD5 of its address is unknown, as it has none.");
  }
  for (const auto& popup : {byScene(file), byType(file)}) {
    EXPECT_THAT(compared(popup), ElementsAre("digest_differs", "", ""));
    EXPECT_EQ(popup.sentence,
              "Its sig is missing, but the MD5 of its page file is unknown, as it cannot be read.");
  }
}

TEST_F(ExplainVerdict, DigestDiffersTellsBothDigestsOfAnAddress) {
  ZOVKPopupModel model = webPage("lobby");
  model.sig = "0123";
  for (const auto& popup : {byScene(model), byType(model)}) {
    EXPECT_THAT(compared(popup), ElementsAre("digest_differs", "0123", md5Hex(model.uri)));
    EXPECT_EQ(popup.sentence,
              "Its sig is \"0123\", but the MD5 of its address is \"" + md5Hex(model.uri) + "\".");
  }
}

}  // namespace
}  // namespace zovk
