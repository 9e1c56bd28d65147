#include <thread>

#include "engine/Installation.h"
#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"
#include "unit/engine/LinkedPlatform.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

using ::testing::Contains;
using Facade = EngineFixture;

std::string documentWith(const std::string& scene, int sceneType) {
  const std::string uri = "https://popups.example/" + scene;
  return R"({"code":0,"popups":[{"scene":")" + scene + R"(","scene_type":)" +
         std::to_string(sceneType) + R"(,"content_type":3,"uri":")" + uri + R"(","sig":")" +
         md5Hex(uri) + R"("}]})";
}

TEST_F(Facade, NamesTheVersionOfTheEngine) {
  EXPECT_STREQ(ZOVKPopupCurrentVersionString, "1.0.0");
}

TEST_F(Facade, KnowsThePopupsOfBothSavedDocumentsBeforeTheStart) {
  addCacheFile("ZOVKPopupRemote.config", documentWith("remote", 4));
  addResource("ZOVKPopupLocal.config", documentWith("local", 5));
  EXPECT_TRUE(ZOVKPopup::havePopup(4));
  EXPECT_TRUE(ZOVKPopup::havePopup(5));
  EXPECT_FALSE(ZOVKPopup::havePopup(6));
  EXPECT_FALSE(engine().isPopupStart());
  EXPECT_EQ(memory().urlSession.createdCount(), 0U);
}

TEST_F(Facade, GetsTheInterfaceReadyForAPopupThatIsThere) {
  addResource("ZOVKPopupLocal.config", documentWith("local", 5));
  EXPECT_FALSE(ZOVKPopup::havePopup(6));
  EXPECT_EQ(memory().userInterface.preparations(), 0);
  EXPECT_TRUE(ZOVKPopup::havePopup(5));
  EXPECT_EQ(memory().userInterface.preparations(), 1);
}

TEST_F(Facade, GetsTheInterfaceReadyOnTheMainThreadWhereverItWasAsked) {
  addResource("ZOVKPopupLocal.config", documentWith("local", 5));
  std::thread([] { EXPECT_TRUE(ZOVKPopup::havePopup(5)); }).join();
  EXPECT_EQ(memory().userInterface.preparations(), 0);
  settle();
  EXPECT_EQ(memory().userInterface.preparations(), 1);
}

TEST_F(Facade, HandsTheStartToTheEngine) {
  ZOVKPopup::startPopup("https://service.example", "1001", "secret");
  EXPECT_TRUE(engine().isPopupStart());
  EXPECT_EQ(engine().popUrl(), "https://service.example");
  EXPECT_EQ(engine().gameID(), "1001");
  EXPECT_EQ(engine().gameKey(), "secret");
}

TEST_F(Facade, HandsTheLoginStateToTheEngine) {
  ZOVKPopup::setChannelID(7, "open", "token", "jwt");
  const ZOVKPopupLoginStateModel state = engine().loginState();
  EXPECT_EQ(state.channelID, 7);
  EXPECT_EQ(state.openID, "open");
  EXPECT_EQ(state.token, "token");
  EXPECT_EQ(state.jwtToken, "jwt");
}

TEST_F(Facade, ShowsAPopupAndHandsItsResultBack) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  settle();
  choose("skip", "later");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "later")}}));
}

TEST_F(Facade, AnswersAtOnceWhenThereIsNothingToShow) {
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  ZOVKPopup::showPolicy(recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}, {-1, ""}}));
}

TEST_F(Facade, TakesEmptyCallbacksForNone) {
  ZOVKPopup::showPopup("lobby", 0, nullptr);
  ZOVKPopup::showPolicy(nullptr);
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  ZOVKPopup::showPopup("lobby", 0, nullptr);
  settle();
  choose("skip");
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(Facade, TellsOfAMissingPlatformAndAnswersEveryRequest) {
  setCurrentPlatform(nullptr);
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  ZOVKPopup::showPolicy(recordAnswer());
  ZOVKPopup::startPopup("https://service.example", "1001", "secret");
  ZOVKPopup::setChannelID(7, "", "", "");
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  const Answer missing{-1, "ZOVKPopup is not set up, or was shut down"};
  EXPECT_EQ(answers(), (std::vector<Answer>{missing, missing}));
  EXPECT_THAT(errorMessages(log()), Contains(missing.second).Times(5));
  ZOVKPopup::showPopup("lobby", 0, nullptr);
  ZOVKPopup::showPolicy(nullptr);
  EXPECT_THAT(errorMessages(log()), Contains(missing.second).Times(7));
}

TEST_F(Facade, IsMadeOnThePlatformThatWasLinkedInUntilThatIsShutDown) {
  if (Installation::now().wasShutDown) GTEST_SKIP() << "a test before this one shut a host down";
  setCurrentPlatform(nullptr);
  linkedPlatform() = std::make_shared<MemoryHostedPlatform>();
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  EXPECT_NE(ZOVKPopupManager::sharedInstanceNoSynch(), nullptr);
  EXPECT_EQ(currentPlatform().get(), &linkedPlatform()->interfaces());
  ZOVKPopupHost::shutDown();
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  EXPECT_EQ(ZOVKPopupManager::sharedInstanceNoSynch(), nullptr);
  linkedPlatform() = nullptr;
}

}  // namespace
}  // namespace zovk
