#include "fixtures/MemoryHostFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HostHooks : public MemoryHostFixture {
 protected:
  HostHooks() {
    EXPECT_TRUE(setUp());
    EXPECT_TRUE(ZOVKPopupHost::setHooks({.popupsWillAppear =
                                             [this] {
                                               EXPECT_EQ(windows(), 0U);
                                               told_.emplace_back("will appear");
                                             },
                                         .popupsDidDisappear =
                                             [this] {
                                               EXPECT_EQ(windows(), 0U);
                                               told_.emplace_back("did disappear");
                                             }}));
  }

  std::size_t windows() { return memory().userInterface.liveWindows(); }
  ZOVKPopupComplete answered() {
    return [this](std::int32_t, const std::string&) { told_.emplace_back("answered"); };
  }
  std::vector<std::string> told_;
};

TEST_F(HostHooks, AreCalledBeforeThePopupAppearsAndAfterItIsGone) {
  showLobby(answered());
  EXPECT_THAT(told_, IsEmpty()) << "hooks come from the pump";
  pump();
  EXPECT_THAT(told_, ElementsAre("will appear"));
  choose("skip");
  pump();
  EXPECT_THAT(told_, ElementsAre("will appear", "answered", "did disappear"));
}

TEST_F(HostHooks, AreCalledOnceForPopupsThatFollowOneAnother) {
  showLobby(answered());
  showLobby(answered());
  pump();
  choose("skip");
  pump();
  choose("skip");
  pump();
  EXPECT_THAT(told_, ElementsAre("will appear", "answered", "answered", "did disappear"));
  showLobby(answered());
  pump();
  EXPECT_EQ(told_.back(), "will appear") << "the next time is told again";
}

TEST_F(HostHooks, AreNotCalledWhenNothingIsShown) {
  ZOVKPopup::showPopup("nowhere", 0, answered());
  ZOVKPopup::showPolicy(answered());
  pump();
  EXPECT_THAT(told_, ElementsAre("answered", "answered"));
}

TEST_F(HostHooks, AreNotCalledByTheShutDown) {
  showLobby(answered());
  pump();
  ZOVKPopupHost::shutDown();
  EXPECT_THAT(told_, ElementsAre("will appear"));
}

TEST_F(HostHooks, TakeThePlaceOfEarlierOnesAndMayBeEmpty) {
  ASSERT_TRUE(ZOVKPopupHost::setHooks({}));
  showLobby(answered());
  pump();
  choose("skip");
  pump();
  EXPECT_THAT(told_, ElementsAre("answered"));
}

TEST_F(HostHooks, MayShutDownBeforeThePopupAppears) {
  ASSERT_TRUE(ZOVKPopupHost::setHooks(
      {.popupsWillAppear = [] { ZOVKPopupHost::shutDown(); }, .popupsDidDisappear = {}}));
  showLobby(answered());
  pump();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(HostHooks, MayShutDownAfterThePopupIsGone) {
  ASSERT_TRUE(ZOVKPopupHost::setHooks(
      {.popupsWillAppear = {}, .popupsDidDisappear = [] { ZOVKPopupHost::shutDown(); }}));
  showLobby(answered());
  pump();
  choose("skip");
  pump();
  EXPECT_THAT(told_, ElementsAre("answered"));
  EXPECT_EQ(windows(), 0U);
}

TEST_F(HostHooks, MayAskForTheNextPopup) {
  ASSERT_TRUE(ZOVKPopupHost::setHooks(
      {.popupsWillAppear = {}, .popupsDidDisappear = [this] { showLobby(answered()); }}));
  showLobby(answered());
  pump();
  choose("skip");
  pump();
  EXPECT_EQ(windows(), 1U);
  EXPECT_EQ(memory().userInterface.windowsMade(), 2U);
}

TEST_F(HostHooks, MayHoldBackThePopupThatIsAboutToAppear) {
  ASSERT_TRUE(ZOVKPopupHost::setHooks(
      {.popupsWillAppear =
           [this] {
             told_.emplace_back("will appear");
             ZOVKPopupHost::holdPopups();
           },
       .popupsDidDisappear = [this] { told_.emplace_back("did disappear"); }}));
  showLobby(answered());
  pump();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  EXPECT_THAT(told_, ElementsAre("will appear", "did disappear"));
}

using HostHolding = HostHooks;

TEST_F(HostHolding, KeepsRequestsWaitingUntilTheyAreLetGo) {
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  showLobby(answered());
  showLobby(answered());
  pump();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  EXPECT_THAT(told_, IsEmpty());
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  pump();
  choose("skip");
  pump();
  choose("skip");
  pump();
  EXPECT_THAT(told_, ElementsAre("will appear", "answered", "answered", "did disappear"));
}

TEST_F(HostHolding, WithinTheSamePumpAsTheRequestStillHoldsItBack) {
  showLobby(answered());
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  pump();
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  pump();
  EXPECT_EQ(windows(), 1U);
}

TEST_F(HostHolding, LeavesWhatIsOnScreenButNotTheRequestAfterIt) {
  showLobby(answered());
  showLobby(answered());
  pump();
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  pump();
  EXPECT_EQ(windows(), 1U);
  choose("skip");
  pump();
  EXPECT_EQ(windows(), 0U) << "the game is seen again";
  EXPECT_THAT(told_, ElementsAre("will appear", "answered", "did disappear"));
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  pump();
  EXPECT_EQ(windows(), 1U);
}

TEST_F(HostHolding, AnswersAtOnceWhereNothingIsThereToShow) {
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  ZOVKPopup::showPopup("nowhere", 0, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
}

TEST_F(HostHolding, MayBeAskedForAndEndedAnyNumberOfTimes) {
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  showLobby(answered());
  pump();
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  pump();
  EXPECT_EQ(windows(), 1U);
  ASSERT_TRUE(ZOVKPopupHost::releasePopups());
  pump();
  EXPECT_EQ(memory().userInterface.windowsMade(), 1U);
}

TEST_F(HostHolding, EndsWithTheShutDown) {
  ASSERT_TRUE(ZOVKPopupHost::holdPopups());
  ZOVKPopupHost::shutDown();
  EXPECT_FALSE(ZOVKPopupHost::holdPopups());
  EXPECT_FALSE(ZOVKPopupHost::releasePopups());
  EXPECT_FALSE(ZOVKPopupHost::setHooks({}));
  EXPECT_THAT(
      errorMessages(log()),
      Contains("ZOVKPopupHost::setHooks: ZOVKPopup is not set up, or was shut down").Times(1));
  ASSERT_TRUE(setUpAnew());
  showLobby(answered());
  pump();
  EXPECT_EQ(windows(), 1U);
}

}  // namespace
}  // namespace zovk
