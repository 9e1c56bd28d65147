#include "ExplainFixture.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ExplainRequest : public ExplainFixture {
 protected:
  std::vector<std::string> verdicts(const ZOVKPopupExplanation& explanation) {
    std::vector<std::string> result;
    for (const auto& popup : explanation.popups) result.push_back(popup.verdict);
    return result;
  }
  std::vector<std::size_t> ranks(const ZOVKPopupExplanation& explanation) {
    std::vector<std::size_t> result;
    for (const auto& popup : explanation.popups) result.push_back(popup.rank);
    return result;
  }
};

TEST_F(ExplainRequest, WithoutAnyPopupSaysThatNoDocumentWasAccepted) {
  for (const char* scene : {"", "lobby"}) {
    const ZOVKPopupExplanation explanation = ZOVKPopupExplain::explain(scene, 1);
    EXPECT_EQ(explanation.sentence, "There are no popups: no configuration document was accepted.");
    EXPECT_THAT(explanation.popups, IsEmpty());
  }
}

TEST_F(ExplainRequest, CountsWhatIsShown) {
  setPopups({webPage("a"), webPage("b", 2), webPage("c")});
  EXPECT_EQ(ZOVKPopupExplain::explain("", 1).sentence, "For scene type 1, 2 of 3 would be shown.");
  EXPECT_EQ(ZOVKPopupExplain::explain("b", 1).sentence, "For scene \"b\", 1 of 3 would be shown.");
  EXPECT_EQ(ZOVKPopupExplain::explain("", 5).sentence,
            "Nothing is shown for scene type 5: none of 3 passes.");
  EXPECT_EQ(ZOVKPopupExplain::explain("x", 1).sentence,
            "Nothing is shown for scene \"x\": none of 3 passes.");
}

TEST_F(ExplainRequest, ListsInListOrderAndRanksInShowingOrder) {
  ZOVKPopupModel high = webPage("c");
  high.priority = 9;
  ZOVKPopupModel late = webPage("b");
  late.publish_time = 5;
  setPopups({webPage("a"), webPage("x", 2), late, high, webPage("a")});
  const ZOVKPopupExplanation explanation = ZOVKPopupExplain::explain("", 1);
  EXPECT_THAT(verdicts(explanation),
              ElementsAre("passed", "other_scene_type", "passed", "passed", "passed"));
  EXPECT_THAT(ranks(explanation), ElementsAre(3, 0, 2, 1, 4));
}

TEST_F(ExplainRequest, ForASceneDoesNotReachBeyondTheOneThatStandsForIt) {
  ZOVKPopupModel other = webPage("lobby");
  other.valid_platform = "9";
  ZOVKPopupModel standing = webPage("lobby");
  standing.pop_id = 12;
  standing.sig = "wrong";
  setPopups({other, standing, webPage("lobby"), webPage("shop")});
  const ZOVKPopupExplanation explanation = ZOVKPopupExplain::explain("lobby", 1);
  EXPECT_THAT(verdicts(explanation),
              ElementsAre("other_channel", "digest_differs", "not_reached", "not_reached"));
  EXPECT_THAT(ranks(explanation), ElementsAre(0, 0, 0, 0));
  EXPECT_EQ(explanation.popups[2].sentence,
            "It is not looked at: the popup 12 before it stands for the scene \"lobby\".");
}

TEST_F(ExplainRequest, FollowsTheMergedList) {
  addResource("ZOVKPopupLocal.config",
              R"({"popups":[{"scene":"lobby","scene_type":1,"uri":"https://a.example"}]})");
  engine().loadConfigFile();
  EXPECT_THAT(verdicts(ZOVKPopupExplain::explain("lobby", 0)), ElementsAre("digest_differs"));
}

TEST_F(ExplainRequest, WithoutAnEngineSaysSo) {
  ZOVKPopupManager::purgeSharedInstance();
  ZOVKPopupFileManager::purgeSharedInstance();
  setCurrentPlatform(nullptr);
  const ZOVKPopupExplanation explanation = ZOVKPopupExplain::explain("lobby", 0);
  EXPECT_EQ(explanation.sentence, "ZOVKPopup is not set up, or was shut down.");
  EXPECT_THAT(explanation.popups, IsEmpty());
}

TEST_F(ExplainRequest, LogsNothingEvenWhereSelectionReportsErrors) {
  ZOVKPopupModel broken = pageFile("lobby");
  addCacheFile(broken.getPopupFileName(), "changed");
  ZOVKPopupModel unsigned_ = pageFile("lobby");
  unsigned_.sig = "";
  addCacheFile(unsigned_.getPopupFileName(), "page");
  ZOVKPopupModel expired = webPage("lobby");
  expired.expire_time = 1;
  ZOVKPopupModel homeless = pageFile("lobby");
  homeless.config_type = 5;
  setPopups({expired, broken, unsigned_, homeless});
  ZOVKPopupExplain::explain("", 1);
  ZOVKPopupExplain::explain("lobby", 0);
  setPopups({});
  ZOVKPopupExplain::explain("", 1);
  EXPECT_THAT(log().lines(), IsEmpty());
  ZOVKPopup::havePopup(1);
  EXPECT_FALSE(log().lines().empty()) << "the game's own calls are logged as ever";
}

TEST_F(ExplainRequest, ChangesNothing) {
  ZOVKPopupModel once = pageFile("lobby");
  once.pop_freq = kPopFreqOnce;
  addCacheFile(kOnceRecordFile, "key,");
  addCacheFile("stray", "a file that no popup needs");
  setPopups({once, conditional("lobby")});
  const auto before = memory().files.listRecursively("/");
  const PopupList list = engine().mergePopupArr();
  ZOVKPopupExplain::explain("", 1);
  ZOVKPopupExplain::explain("lobby", 0);
  settle();
  EXPECT_EQ(memory().files.listRecursively("/"), before);
  EXPECT_EQ(memory().files.read(std::string(kCache) + "/" + kOnceRecordFile), "key,");
  EXPECT_EQ(engine().mergePopupArr(), list);
  EXPECT_EQ(memory().urlSession.createdCount(), 0U);
  EXPECT_EQ(memory().userInterface.frontWindow(), nullptr);
  EXPECT_TRUE(engine().popupCache().empty());
}

}  // namespace
}  // namespace zovk
