#include <thread>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ManagerLifecycle = EngineFixture;

constexpr const char* kVersionLine = "ZOVKPopup start, version:1.0.0";

TEST_F(ManagerLifecycle, AFreshEngineHoldsItsDefaults) {
  EXPECT_FALSE(engine().isPopupStart());
  EXPECT_FALSE(engine().isPopuping());
  EXPECT_EQ(engine().window(), nullptr);
  EXPECT_EQ(engine().timer(), nullptr);
  EXPECT_EQ(engine().policyPublishTime(), std::nullopt);
  EXPECT_TRUE(engine().popupCache().empty());
  EXPECT_TRUE(engine().remotePopupArr().empty());
  EXPECT_TRUE(engine().localPopupArr().empty());
  EXPECT_TRUE(engine().mergePopupArr().empty());
  EXPECT_EQ(engine().startTime(), 0);
  EXPECT_EQ(engine().serverTime(), 0);
  EXPECT_EQ(engine().requestTime(), 0);
  EXPECT_EQ(engine().popUrl(), "");
  EXPECT_EQ(engine().gameID(), "");
  EXPECT_EQ(engine().gameKey(), "");
}

TEST_F(ManagerLifecycle, BeforeTheHostNamesThePlayerTheChannelIsOneAndTheTextsAreEmpty) {
  const ZOVKPopupLoginStateModel state = engine().loginState();
  EXPECT_EQ(state.channelID, 1);
  EXPECT_EQ(state.openID + state.token + state.jwtToken, "");
}

TEST_F(ManagerLifecycle, InitLogsTheVersionThenLoadsThenClearsUp) {
  engine();
  EXPECT_THAT(
      debugMessages(log()),
      ElementsAre(kVersionLine, "Start load config file", "Load remote config", "Load local config",
                  "Start merge config", "Merge config done, Popup count:0", "Delete expired Popup",
                  "Delete expire Popup file", "Delete expire Popup once record"));
}

TEST_F(ManagerLifecycle, ThereIsNoEngineBeforeTheFirstAccess) {
  EXPECT_EQ(ZOVKPopupManager::sharedInstanceNoSynch(), nullptr);
  auto* const made = ZOVKPopupManager::sharedInstanceSynch();
  EXPECT_NE(made, nullptr);
  EXPECT_EQ(ZOVKPopupManager::sharedInstanceNoSynch(), made);
  EXPECT_EQ(ZOVKPopupManager::sharedInstance(), made);
  EXPECT_THAT(debugMessages(log()), Contains(kVersionLine).Times(1));
}

TEST_F(ManagerLifecycle, AllocatingTwiceOrCopyingGivesTheOneObject) {
  auto* const first = ZOVKPopupManager::allocWithZone();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(ZOVKPopupManager::allocWithZone(), first);
  EXPECT_EQ(first->copyWithZone(), first);
  EXPECT_EQ(ZOVKPopupManager::sharedInstance(), first);
}

TEST_F(ManagerLifecycle, APurgedEngineIsMadeAnewAndCanBeStartedAgain) {
  engine().startPopup("https://one.example", "1", "k");
  ZOVKPopupManager::purgeSharedInstance();
  EXPECT_EQ(ZOVKPopupManager::sharedInstanceNoSynch(), nullptr);
  EXPECT_FALSE(engine().isPopupStart());
  EXPECT_THAT(debugMessages(log()), Contains(kVersionLine).Times(2));
  engine().startPopup("https://two.example", "2", "k");
  EXPECT_EQ(engine().popUrl(), "https://two.example");
}

TEST_F(ManagerLifecycle, PurgingWithoutAnEngineDoesNothing) {
  ZOVKPopupManager::purgeSharedInstance();
  EXPECT_TRUE(log().lines().empty());
}

TEST_F(ManagerLifecycle, ThreadsThatComeAtOnceGetTheSameEngineInitialisedOnce) {
  std::vector<ZOVKPopupManager*> seen(8);
  std::vector<std::thread> threads;
  for (auto& manager : seen) {
    threads.emplace_back([&manager] { manager = ZOVKPopupManager::sharedInstance(); });
  }
  for (auto& thread : threads) thread.join();
  for (auto* manager : seen) EXPECT_EQ(manager, &engine());
  EXPECT_THAT(debugMessages(log()), Contains(kVersionLine).Times(1));
}

TEST_F(ManagerLifecycle, DroppingAnEngineClosesItsWindow) {
  auto manager = std::make_shared<ZOVKPopupManager>(memory().shared());
  manager->initPopupWindow();
  EXPECT_EQ(memory().userInterface.liveWindows(), 1U);
  manager.reset();
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(ManagerLifecycle, DroppingAnEngineTakesThePageOutOfAWindowThatSomebodyElseHolds) {
  auto manager = std::make_shared<ZOVKPopupManager>(memory().shared());
  manager->setMergePopupArr(listOf({webPage("lobby")}));
  manager->showPopup("lobby", 0, nullptr);
  settle();
  const auto window = memory().userInterface.frontWindow();
  ASSERT_NE(window->rootViewController(), nullptr);
  manager->stopCheckKeyWindow();
  const std::weak_ptr<ZOVKPopupManager> gone = manager;
  manager.reset();
  ASSERT_TRUE(gone.expired());
  EXPECT_EQ(window->rootViewController(), nullptr);
}

TEST_F(ManagerLifecycle, AnEngineWithoutAFileManagerFindsNothingToShow) {
  const PopupList popups = listOf({webPage("lobby")});
  const auto manager = std::make_shared<ZOVKPopupManager>(memory().shared());
  setCurrentPlatform(nullptr);
  EXPECT_TRUE(manager->getValidPopupForSceneType(1, popups).empty());
  EXPECT_TRUE(manager->getValidPopupForScene("lobby", popups).empty());
}

TEST_F(ManagerLifecycle, TheKeyWindowCheckKeepsTheEngineAliveUntilItIsStopped) {
  auto manager = std::make_shared<ZOVKPopupManager>(memory().shared());
  const std::weak_ptr<ZOVKPopupManager> weak = manager;
  manager->startCheckKeyWindow();
  manager.reset();
  ASSERT_FALSE(weak.expired());
  weak.lock()->stopCheckKeyWindow();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
}

}  // namespace
}  // namespace zovk
