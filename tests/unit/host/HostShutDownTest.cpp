#include "fixtures/MemoryHostFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;

constexpr const char* kGone = "ZOVKPopup is not set up, or was shut down";

class HostShutDown : public MemoryHostFixture {
 protected:
  HostShutDown() { EXPECT_TRUE(setUp()); }
  void expectNothingLeft() {
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
    EXPECT_EQ(memory().userInterface.liveLayouts(), 0U);
    EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
    EXPECT_EQ(memory().scheduler.pendingTaskCount(), 0U);
    EXPECT_EQ(ZOVKPopupManager::sharedInstanceNoSynch(), nullptr);
    EXPECT_EQ(ZOVKPopupFileManager::sharedInstanceNoSynch(), nullptr);
  }
};

TEST_F(HostShutDown, WithoutAnEngineMayComeTwice) {
  ZOVKPopupHost::shutDown();
  ZOVKPopupHost::shutDown();
  ZOVKPopupHost::pump();
  EXPECT_EQ(ZOVKPopupHost::pollDescriptor(), -1);
}

TEST_F(HostShutDown, ClosesAnOpenPopupWithoutCallingBack) {
  showLobby();
  showLobby();
  pump();
  ZOVKPopupHost::shutDown();
  ZOVKPopupHost::pump();
  EXPECT_TRUE(answers().empty());
  expectNothingLeft();
}

TEST_F(HostShutDown, AnswersLaterRequestsWithAnErrorInsteadOfMakingTheEngineAnew) {
  showLobby();
  ZOVKPopupHost::shutDown();
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  ZOVKPopup::showPolicy(recordAnswer());
  ZOVKPopup::startPopup("https://service.example", "1", "k");
  ZOVKPopup::setChannelID(1, "", "", "");
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, kGone}, {-1, kGone}}));
  EXPECT_THAT(errorMessages(log()), Contains(kGone).Times(5));
  expectNothingLeft();
}

TEST_F(HostShutDown, LetsTheHostSetUpAgain) {
  showLobby();
  pump();
  ZOVKPopupHost::shutDown();
  ASSERT_TRUE(setUpAnew());
  showLobby();
  pump();
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, R"({"action":"skip","msg":""})"}}));
}

TEST_F(HostShutDown, MayComeFromTheCallbackOfAPopup) {
  showLobby([this](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    ZOVKPopupHost::shutDown();
  });
  pump();
  choose("cancel");
  ZOVKPopupHost::pump();
  EXPECT_EQ(answers().size(), 1U);
  expectNothingLeft();
}

TEST_F(HostShutDown, MayComeFromACallbackThatThePumpMakes) {
  showLobby([](std::int32_t, const std::string&) { ZOVKPopupHost::shutDown(); });
  showLobby();
  pump();
  choose("commit");  // without a report address: answered from the main queue
  pump();
  EXPECT_TRUE(answers().empty());
  expectNothingLeft();
}

TEST_F(HostShutDown, MayComeFromAnImmediateAnswer) {
  for (const bool policy : {false, true}) {
    const ZOVKPopupComplete end = [this](std::int32_t code, const std::string& message) {
      recordAnswer()(code, message);
      ZOVKPopupHost::shutDown();
    };
    if (policy) {
      ZOVKPopup::showPolicy(end);
    } else {
      ZOVKPopup::showPopup("nowhere", 0, end);
    }
    expectNothingLeft();
    ASSERT_TRUE(setUpAnew());
  }
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}, {-1, ""}}));
}

TEST_F(HostShutDown, MayComeFromThePolicysImmediateAnswer) {
  ZOVKPopupModel policy = lobby();
  policy.scene = "ZOVKPolicy";
  policy.publish_time = 5;
  ZOVKPopupManager::sharedInstance()->setMergePopupArr(
      {std::make_shared<const ZOVKPopupModel>(policy)});
  ZOVKPopup::showPolicy([this](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    ZOVKPopupHost::shutDown();
  });
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  expectNothingLeft();
}

TEST_F(HostShutDown, MayComeFromACallbackThatSetsUpAgain) {
  showLobby([this](std::int32_t, const std::string&) {
    ZOVKPopupHost::shutDown();
    EXPECT_TRUE(setUpAnew());
    showLobby();
  });
  pump();
  choose("skip");
  pump();
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(HostShutDown, DropsRequestsThatAreUnderWay) {
  ZOVKPopup::startPopup("https://service.example", "1", "k");
  memory().urlSession.answer("/popup/get_info", 200, "{}");
  ZOVKPopupHost::shutDown();
  log().clear();
  EXPECT_EQ(memory().urlSession.deliver(), 0U);
  EXPECT_TRUE(log().lines().empty());
}

}  // namespace
}  // namespace zovk
