#include <thread>

#include "fixtures/MemoryHostFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using HostSetUp = MemoryHostFixture;

TEST_F(HostSetUp, BeforeItNothingHappensAndNothingBreaks) {
  ZOVKPopupHost::pump();
  ZOVKPopupHost::gameWindowDidBecomeKey();
  ZOVKPopupHost::shutDown();
  EXPECT_EQ(ZOVKPopupHost::pollDescriptor(), -1);
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "ZOVKPopup is not set up, or was shut down"}}));
}

TEST_F(HostSetUp, WithAPlatformOfItsOwnPutsTheEngineOnIt) {
  ASSERT_TRUE(setUp());
  addLobby();
  EXPECT_TRUE(ZOVKPopup::havePopup(1));
}

TEST_F(HostSetUp, ASecondTimeIsRefusedWithAnErrorLine) {
  ASSERT_TRUE(setUp());
  const auto other = std::make_shared<MemoryHostedPlatform>();
  EXPECT_FALSE(ZOVKPopupHost::setUp(other));
  EXPECT_FALSE(ZOVKPopupHost::setUp(ZOVKPopupHostSettings{}));
  EXPECT_THAT(errorMessages(log()),
              Contains("ZOVKPopupHost::setUp was called before, or the popups are already in use")
                  .Times(2));
  EXPECT_EQ(other.use_count(), 1);
}

TEST_F(HostSetUp, WithoutAPlatformIsRefusedWithAnErrorLine) {
  ZPLogger::setEnvironment(memoryLogEnvironment(log(), false));
  EXPECT_FALSE(ZOVKPopupHost::setUp(std::shared_ptr<HostedPlatform>()));
  EXPECT_THAT(errorMessages(log()), Contains("ZOVKPopupHost::setUp found no platform"));
  EXPECT_TRUE(setUp()) << "it can be made good";
}

TEST_F(HostSetUp, PumpingRunsWhatIsDueAndCallbacksComeFromIt) {
  ASSERT_TRUE(setUp());
  showLobby();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  pump();
  EXPECT_EQ(memory().userInterface.liveWindows(), 1U);
  choose("commit");
  EXPECT_TRUE(answers().empty());
  pump();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
}

TEST_F(HostSetUp, PumpingWithASpentBudgetLeavesTheRestForTheNextCall) {
  ASSERT_TRUE(setUp());
  int ran = 0;
  for (int i = 0; i < 10; ++i) memory().scheduler.async([&ran] { ++ran; });
  ZOVKPopupHost::pump(std::chrono::microseconds(0));
  EXPECT_LE(ran, 1);
  pump();
  EXPECT_EQ(ran, 10);
}

TEST_F(HostSetUp, PumpingFromWithinACallbackDoesNothing) {
  ASSERT_TRUE(setUp());
  int ran = 0;
  auto& queue = memory().scheduler;
  queue.async([&] {
    queue.async([&ran] { ++ran; });
    ZOVKPopupHost::pump();
    EXPECT_EQ(ran, 0);
  });
  pump();
  EXPECT_EQ(ran, 1);
}

TEST_F(HostSetUp, OtherThreadsAreTurnedAwayWithAnErrorLine) {
  ASSERT_TRUE(setUp());
  showLobby();
  std::thread([] {
    ZOVKPopupHost::pump();
    ZOVKPopupHost::gameWindowDidBecomeKey();
    ZOVKPopupHost::gameWindowDidResignKey();
    ZOVKPopupHost::gamePadDidPress(ZOVKPopupGamePad::kUp);
    EXPECT_FALSE(ZOVKPopupHost::setHooks({}));
    EXPECT_FALSE(ZOVKPopupHost::holdPopups());
    EXPECT_FALSE(ZOVKPopupHost::releasePopups());
    ZOVKPopupHost::shutDown();
  }).join();
  for (const char* operation :
       {"pump", "gameWindowDidBecomeKey", "gameWindowDidResignKey", "gamePadDidPress", "setHooks",
        "holdPopups", "releasePopups", "shutDown"}) {
    EXPECT_THAT(errorMessages(log()),
                Contains(std::string("ZOVKPopupHost::") + operation +
                         " was called on another thread than the main thread"));
  }
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  pump();
  EXPECT_EQ(memory().userInterface.liveWindows(), 1U) << "it was not shut down";
}

TEST_F(HostSetUp, ThePopupTakesTheKeyboardBackFromTheGamesWindow) {
  ASSERT_TRUE(setUp());
  showLobby();
  pump();
  const auto window = memory().userInterface.frontWindow();
  EXPECT_TRUE(window->isKeyWindow());
  ZOVKPopupHost::gameWindowDidBecomeKey();
  EXPECT_FALSE(window->isKeyWindow());
  memory().scheduler.skip(std::chrono::milliseconds(100));
  pump();
  EXPECT_TRUE(window->isKeyWindow());
  ZOVKPopupHost::gameWindowDidBecomeKey();
  ZOVKPopupHost::gameWindowDidResignKey();
  EXPECT_TRUE(window->isKeyWindow());
}

TEST_F(HostSetUp, APressOfAGamePadGoesToThePlatformWithTheButtonsNames) {
  ASSERT_TRUE(setUp());
  ZOVKPopupHost::gamePadDidPress(ZOVKPopupGamePad::kLeft);
  ZOVKPopupHost::gamePadDidPress(ZOVKPopupGamePad::kPress, "Cross", "Circle");
  const auto& presses = memory().userInterface.padPresses();
  ASSERT_EQ(presses.size(), 2U);
  EXPECT_EQ(presses[0].press, ZOVKPopupGamePad::kLeft);
  EXPECT_EQ(presses[0].pressName + presses[0].leaveName, "AB");
  EXPECT_EQ(presses[1].press, ZOVKPopupGamePad::kPress);
  EXPECT_EQ(presses[1].pressName + presses[1].leaveName, "CrossCircle");
}

TEST_F(HostSetUp, TheMemoryPlatformHasNothingToPoll) {
  ASSERT_TRUE(setUp());
  EXPECT_EQ(ZOVKPopupHost::pollDescriptor(), -1);
}

}  // namespace
}  // namespace zovk
