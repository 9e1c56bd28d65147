#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

using testing::IsEmpty;

// The condition is asked at an address that keeps what it is sent: the service stores nothing
// whose signature is wrong, and its answer wants no popup.
class Login : public RemoteFixture {
 protected:
  void startWithKeptCondition(const std::string& scene = "vip") {
    offer({conditional(scene, "/report/asked")});
    startService();
    startGame();
    await("Start to download remote Popup file");
    log().clear();
  }
  /// Returns the request that arrives at the service when the game asks.
  boost::json::object arrived(const std::string& scene = "vip") {
    const std::size_t before = answers().size();
    ZOVKPopup::showPopup(scene, 0, recordAnswer());
    pumpUntilAnswers(before + 1);
    EXPECT_EQ(answers().back(), Answer(0, "reatin complete"));
    EXPECT_THAT(log().errors(), IsEmpty());
    const auto stored = reports();
    if (stored.size() != before + 1) {
      ADD_FAILURE() << stored.size() << " reports";
      return {};
    }
    return stored.back().at("body").as_object();
  }
  static boost::json::object body(int channel, const std::string& openID, const std::string& token,
                                  const std::string& jwtToken, const std::string& scene = "vip") {
    return {{"channel_id", channel}, {"gopenid", openID}, {"token", token},
            {"jwt_token", jwtToken}, {"pop_id", 8},       {"scene", scene}};
  }
};

TEST_F(Login, ThatTheGameNeverGaveArrivesAsEmptyTexts) {
  startWithKeptCondition();
  EXPECT_EQ(arrived(), body(1, "", "", ""));
}

TEST_F(Login, WithoutTextsArrivesAsEmptyTexts) {
  startWithKeptCondition();
  ZOVKPopup::setChannelID(-5, "", "", "");
  EXPECT_EQ(arrived(), body(-5, "", "", ""));
}

TEST_F(Login, WithSignsOfAddressesAndJsonArrivesUnchanged) {
  startWithKeptCondition();
  const std::string openID = R"("quoted"'single'\back\slash/{}[],:)";
  const std::string token = "a=b&c#d?e%20f+g;h&sig=0123&game_id=9#";
  const std::string jwtToken = "eyJ.\t\x01.tab\nline\rreturn<tag>";
  ZOVKPopup::setChannelID(2, openID, token, jwtToken);
  EXPECT_EQ(arrived(), body(2, openID, token, jwtToken));
}

TEST_F(Login, InAnyScriptArrivesUnchanged) {
  startWithKeptCondition("größe選択🎮");
  ZOVKPopup::setChannelID(3, "spielerin-ü", "🎮👩‍🚀é\u00a0", "選択\u2028");
  EXPECT_EQ(arrived("größe選択🎮"),
            body(3, "spielerin-ü", "🎮👩‍🚀é\u00a0", "選択\u2028", "größe選択🎮"));
}

TEST_F(Login, LosesItsBlanksOnTheWayAsTheSignatureDoes) {
  startWithKeptCondition("main menu");
  ZOVKPopup::setChannelID(4, " a  b ", "t o k e n", "   ");
  EXPECT_EQ(arrived("main menu"), body(4, "ab", "token", "", "mainmenu"));
}

TEST_F(Login, ThatChangesIsTheNewOneInTheNextQuery) {
  startWithKeptCondition();
  ZOVKPopup::setChannelID(1, "first", "", "");
  EXPECT_EQ(arrived().at("gopenid"), "first");
  ZOVKPopup::setChannelID(1, "second", "", "");
  EXPECT_EQ(arrived().at("gopenid"), "second");
}

TEST_F(Login, OfManyKilobytesArrivesWhole) {
  startWithKeptCondition();
  const std::string token(30'000, 't');
  ZOVKPopup::setChannelID(1, "", token, "");
  EXPECT_EQ(arrived().at("token"), boost::json::string(token));
}

}  // namespace
}  // namespace zovk
