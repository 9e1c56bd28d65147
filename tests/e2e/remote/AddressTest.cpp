#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

class Address : public RemoteFixture {
 protected:
  /// Starts the game with an address from which nothing can come.
  void startInVain(const std::string& address) {
    startGame(address);
    await("Request remote config failed!");
  }
};

TEST_F(Address, AServiceThatIsDownLeavesTheShippedPopups) {
  startService();
  stopService();
  startInVain(base());
  ASSERT_EQ(log().errors().size(), 2U);
  EXPECT_THAT(log().errors()[0], StartsWith("Request url:" + base() + kConfigPath + "?game_id="));
  EXPECT_THAT(log().errors()[0], testing::ContainsRegex("error:.*Connection refused|Couldn't con"));
  EXPECT_EQ(log().errors()[1], "Request remote config failed!");
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
  ZOVKPopup::showPopup("nothing of that name", 0, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
  EXPECT_TRUE(cacheListing().empty());
}

TEST_F(Address, YesterdaysPopupsAreThereWhenTheServiceIsDownToday) {
  startService();
  letADayPass();
  stopService();
  const std::string yesterday = savedConfig();
  startInVain(base());
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_FALSE(ZOVKPopup::havePopup(kLocalType));
  EXPECT_FALSE(yesterday.empty());
  EXPECT_EQ(savedConfig(), yesterday);
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
}

TEST_F(Address, ANameThatIsNotFoundLeavesTheShippedPopups) {
  startInVain("http://popups.invalid");
  EXPECT_THAT(
      log().errors(),
      ElementsAre(
          testing::AllOf(StartsWith("Request url:http://popups.invalid/popup/get_info?game_id="),
                         EndsWith(", error:Could not resolve host: popups.invalid")),
          "Request remote config failed!"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
}

TEST_F(Address, AnAddressThatDoesNotParseFailsLikeAServiceThatIsDown) {
  for (const std::string address :
       {"http://[", "http://two words", "://", "http://127.0.0.1:99999", "http://a b@[::1"}) {
    SCOPED_TRACE(address);
    startInVain(address);
    ASSERT_EQ(log().errors().size(), 2U);
    EXPECT_THAT(log().errors()[0], StartsWith("Request url:" + address));
    EXPECT_THAT(log().errors()[0], testing::HasSubstr(", error:unusable address: "));
    EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
    endGame();
  }
}

TEST_F(Address, AnAddressOfAnotherKindIsNotAsked) {
  for (const std::string address : {"ftp://127.0.0.1", "file:///etc", "javascript:alert(1)"}) {
    SCOPED_TRACE(address);
    startInVain(address);
    ASSERT_EQ(log().errors().size(), 2U);
    EXPECT_THAT(log().errors()[0], StartsWith("Request url:" + address));
    EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
    endGame();
  }
}

TEST_F(Address, WithoutAnAddressNothingIsSent) {
  startInVain("");
  EXPECT_THAT(log().errors(), ElementsAre("Url illegal", "Request remote config failed!"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kLocalType));
}

}  // namespace
}  // namespace zovk
