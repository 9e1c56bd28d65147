#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNoConfig = "No remote config or parse config file error";

// Every test has a good day behind it, and today the service offers other popups in a bad way.
class ConfigFaults : public RemoteFixture {
 protected:
  void spoilToday(const std::string& fault, const std::string& lastLine) {
    startService();
    letADayPass();
    yesterday_ = savedConfig();
    offer({pageFile("lobby", 3, "lobby.html")});
    stopService();
    startService({"--fault", std::string(kConfigPath) + "=" + fault});
    startGame();
    await(lastLine);
  }
  void expectYesterday() {
    EXPECT_FALSE(yesterday_.empty());
    EXPECT_EQ(savedConfig(), yesterday_);
    EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
    EXPECT_EQ(cacheListing().size(), 2U);
    EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
    EXPECT_FALSE(ZOVKPopup::havePopup(3));
  }
  void expectFailure(const std::string& reason) {
    EXPECT_THAT(log().errors(),
                ElementsAre(requestError(kConfigPath, reason), "Request remote config failed!"));
    expectYesterday();
  }

  std::string yesterday_;
};

TEST_F(ConfigFaults, AConnectionThatIsDroppedChangesNothing) {
  spoilToday("drop", "Request remote config failed!");
  expectFailure("Empty reply from server");
}

TEST_F(ConfigFaults, AnAnswerThatBreaksOffChangesNothing) {
  spoilToday("truncate:77", "Request remote config failed!");
  expectFailure("transfer closed with 77 bytes remaining to read");
}

TEST_F(ConfigFaults, ARedirectThatNeverEndsChangesNothing) {
  spoilToday("redirect-loop", "Request remote config failed!");
  expectFailure("Maximum (16) redirects followed");
}

TEST_F(ConfigFaults, AServiceThatDoesNotAnswerForFifteenSecondsChangesNothing) {
  spoilToday("delay:60000", "Request remote config failed!");
  expectFailure("Timeout was reached");
}

TEST_F(ConfigFaults, AServerErrorWithAPageOfHtmlChangesNothing) {
  spoilToday("status-500", kNoConfig);
  EXPECT_THAT(log().errors(), ElementsAre("Parse config file error:syntax error", kNoConfig));
  expectYesterday();
}

TEST_F(ConfigFaults, AnEmptyAnswerChangesNothingAndIsNoError) {
  spoilToday("empty", "Handle remote config response:0");
  EXPECT_THAT(log().errors(), IsEmpty());
  expectYesterday();
}

TEST_F(ConfigFaults, AnAnswerThatIsNoJsonChangesNothing) {
  spoilToday("not-json", kNoConfig);
  EXPECT_THAT(log().errors(), ElementsAre("Parse config file error:syntax error", kNoConfig));
  expectYesterday();
}

TEST_F(ConfigFaults, FiftyMegabytesOfBlanksChangeNothing) {
  spoilToday("huge", kNoConfig);
  EXPECT_TRUE(log().has("Handle remote config response:52428800"));
  EXPECT_THAT(log().errors(), ElementsAre("Parse config file error:more than 8 MiB", kNoConfig));
  expectYesterday();
}

TEST_F(ConfigFaults, MoreThanTheClientTakesChangesNothing) {
  spoilToday("huge:65", "Request remote config failed!");
  expectFailure("Maximum file size exceeded");
}

TEST_F(ConfigFaults, AnAnswerThatIsLateIsTakenAllTheSame) {
  spoilToday("delay:300", ".html done, result:1");
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_NE(savedConfig(), yesterday_);
  EXPECT_TRUE(ZOVKPopup::havePopup(3));
}

TEST_F(ConfigFaults, AnAnswerThatDripsIsTakenAllTheSame) {
  spoilToday("slow-drip:400", ".html done, result:1");
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_NE(savedConfig(), yesterday_);
  EXPECT_TRUE(ZOVKPopup::havePopup(3));
}

TEST_F(ConfigFaults, AGameThatIsNotKnownToTheServiceKeepsWhatItHas) {
  startService();
  letADayPass();
  yesterday_ = savedConfig();
  folder().write("games.json", R"({"1001": "another key"})");
  startGame();
  await(kNoConfig);
  EXPECT_THAT(log().errors(), ElementsAre(kNoConfig));
  EXPECT_TRUE(log().has("code:403, message:wrong signature"));
  expectYesterday();
}

TEST_F(ConfigFaults, AnAnswerWithACodeChangesNothing) {
  startService();
  letADayPass();
  yesterday_ = savedConfig();
  folder().write("config.json", R"({"code": 7, "message": "closed", "popups": []})");
  startGame();
  await(kNoConfig);
  EXPECT_TRUE(log().has("code:7, message:closed"));
  expectYesterday();
}

// Entries that cannot be read are passed over, which leaves a good document without popups: it is
// for tomorrow.
TEST_F(ConfigFaults, AListWithoutOneReadableEntryTakesThePopupsAwayTomorrow) {
  startService();
  letADayPass();
  const std::string document = R"({"code":0,"popups":[1]})";
  folder().write("config.json", document);
  startGame();
  await("Save ZOVKPopupRemote.config done, result:1");
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_EQ(savedConfig(), document);
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  endGame();
  startGame();
  EXPECT_FALSE(ZOVKPopup::havePopup(kRemoteType));
}

TEST_F(ConfigFaults, AnEmptyListDoesNotTakeThePopupsAway) {
  startService();
  letADayPass();
  yesterday_ = savedConfig();
  offer({});
  startGame();
  await(kNoConfig);
  EXPECT_THAT(log().errors(), ElementsAre("No Popups or Popups type error", kNoConfig));
  expectYesterday();
}

}  // namespace
}  // namespace zovk
