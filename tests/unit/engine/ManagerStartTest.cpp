#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ManagerStart = EngineFixture;

TEST_F(ManagerStart, StoresWhatTheHostGivesAndAsksTheService) {
  engine().startPopup("https://service.example", "1001", "secret");
  EXPECT_THAT(debugMessages(log()), Contains("Start Popup, ID1:1001, ID2:secret"));
  EXPECT_EQ(engine().popUrl(), "https://service.example");
  EXPECT_EQ(memory().urlSession.requestsTo("https://service.example/popup/get_info").size(), 1U);
}

TEST_F(ManagerStart, ASecondStartIsLoggedAndChangesNothing) {
  engine().startPopup("https://service.example", "1001", "secret");
  log().clear();
  engine().startPopup("https://other.example", "2002", "other");
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Start Popup, ID1:2002, ID2:other", "Popup had started"));
  EXPECT_EQ(engine().popUrl(), "https://service.example");
  EXPECT_EQ(engine().gameID(), "1001");
  EXPECT_EQ(engine().gameKey(), "secret");
  EXPECT_EQ(memory().urlSession.requestCount(), 1U);
}

TEST_F(ManagerStart, AnAbsentAddressIsKeptEmptyAndTheRequestFailsAtOnce) {
  engine();
  log().clear();
  engine().startPopup("", "1001", "secret");
  EXPECT_EQ(engine().popUrl(), "");
  EXPECT_THAT(errorMessages(log()), ElementsAre("Url illegal", "Request remote config failed!"));
  EXPECT_EQ(memory().urlSession.createdCount(), 0U);
  EXPECT_TRUE(engine().isPopupStart()) << "it counts as the one start";
}

TEST_F(ManagerStart, TheLoginStateIsLoggedAndTakenAsGivenAnyNumberOfTimes) {
  engine().setChannelID(7, "open", "token", "jwt");
  EXPECT_THAT(debugMessages(log()), Contains("Set state ID1:7 ID2:open ID3:token ID4:jwt"));
  engine().startPopup("https://service.example", "1001", "secret");
  engine().setChannelID(-3, "", "", "");
  EXPECT_EQ(engine().loginState().channelID, -3);
  EXPECT_EQ(engine().loginState().openID, "");
}

}  // namespace
}  // namespace zovk
