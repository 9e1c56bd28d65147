#include <boost/json/parse.hpp>

#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

using testing::IsEmpty;

// A real page in a real web view. These want a screen.
class OnScreen : public RemoteFixture {
 protected:
  ZOVKPopupHostSettings gameSettings() override {
    auto game = RemoteFixture::gameSettings();
    game.helperPath.clear();
    return game;
  }
  /// A page file of the service that answers at once.
  boost::json::object answering(const std::string& scene, std::uint64_t sceneType,
                                const std::string& action, const std::string& message) {
    const std::string name = scene + "-" + action + ".html";
    folder().write("pages/" + name, answeringPage(action, message, true));
    return pageFile(scene, sceneType, name);
  }
  static std::string result(const std::string& action, const std::string& message) {
    return R"({"action":")" + action + R"(","msg":")" + message + R"("})";
  }
};

TEST_F(OnScreen, ACommitArrivesAsAReportWithARightSignature) {
  auto shop = answering("shop", kRemoteType, "commit", R"(it's 2 & 3 = "five" #🎮)");
  shop["report_url"] = "{{base}}/report/shop?from=game";
  offer({shop});
  startService();
  startGame();
  awaitPages(1);
  log().clear();
  ZOVKPopup::setChannelID(2, R"(op"en)", "tok&en", "jwt=#");
  ZOVKPopup::showPopup("shop", 0, recordAnswer());
  pumpUntil([&] { return log().has("Report user data request success"); }, "the report");
  pumpUntilAnswers(1);
  const std::string chosen = R"({"action":"commit","msg":"it's2&3=\"five\"#🎮"})";
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, chosen}}));
  ASSERT_EQ(reports().size(), 1U);
  const auto report = reports().front();
  EXPECT_EQ(report.at("name"), "shop");
  EXPECT_EQ(report.at("result"), boost::json::parse(chosen));
  EXPECT_EQ(report.at("body"), (boost::json::value{{"channel_id", 2},
                                                   {"gopenid", R"(op"en)"},
                                                   {"token", "tok&en"},
                                                   {"jwt_token", "jwt=#"},
                                                   {"pop_id", 7},
                                                   {"scene", "shop"},
                                                   {"data", chosen}}));
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(OnScreen, AReportThatIsLostDoesNotHoldUpTheGame) {
  auto shop = answering("shop", kRemoteType, "commit", "bought");
  shop["report_url"] = "{{base}}/report/shop";
  offer({shop});
  startService({"--fault", "/report/shop=drop"});
  startGame();
  awaitPages(1);
  log().clear();
  ZOVKPopup::showPopup("shop", 0, recordAnswer());
  pumpUntil([&] { return log().has("Report user data request failed"); }, "the report's end");
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, result("commit", "bought")}}));
  EXPECT_THAT(log().errors(),
              testing::ElementsAre(requestError("/report/shop", "Empty reply from server"),
                                   "Report user data request failed"));
}

TEST_F(OnScreen, AReportAddressThatDoesNotParseDoesNotHoldUpTheGameEither) {
  auto shop = answering("shop", kRemoteType, "commit", "bought");
  shop["report_url"] = "http://[/report";
  offer({shop});
  startService();
  startGame();
  awaitPages(1);
  log().clear();
  ZOVKPopup::showPopup("shop", 0, recordAnswer());
  pumpUntil([&] { return log().has("Report user data request failed"); }, "the report's end");
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, result("commit", "bought")}}));
  EXPECT_THAT(log().errors(),
              testing::ElementsAre(testing::StartsWith("Request url:http://[/report?game_id="),
                                   "Report user data request failed"));
}

TEST_F(OnScreen, YesterdaysPopupIsShownWhileTheServiceIsDown) {
  offer({answering("lobby", kRemoteType, "skip", "yesterday")});
  startService();
  letADayPass();
  stopService();
  startGame();
  await("Request remote config failed!");
  ZOVKPopup::showPopup("lobby", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, result("skip", "yesterday")}}));
}

TEST_F(OnScreen, ThePolicyComesOnceAndAgainWhenNewerOrDeclined) {
  const auto showPolicy = [&](std::int32_t published, const char* action) {
    auto policy = answering("ZOVKPolicy", 0, action, "");
    policy["publish_time"] = published;
    offer({policy});
    letADayPass();
    startGame("");
    const std::size_t before = answers().size();
    ZOVKPopup::showPolicy(recordAnswer());
    pumpUntilAnswers(before + 1);
    endGame();
    return answers().back();
  };
  startService();
  const Answer notNew(-1, "");
  EXPECT_EQ(showPolicy(5, "skip"), Answer(0, result("skip", "")));
  EXPECT_EQ(showPolicy(5, "skip"), notNew);
  EXPECT_EQ(showPolicy(6, "cancel"), Answer(2, result("cancel", "")));
  EXPECT_EQ(showPolicy(6, "skip"), Answer(0, result("skip", "")));
  EXPECT_EQ(showPolicy(6, "cancel"), notNew);
  EXPECT_EQ(showPolicy(4, "skip"), notNew);
}

TEST_F(OnScreen, AConditionalPopupThatIsWantedGetsItsExtraParameters) {
  folder().write("checks.json",
                 R"({"vip": {"need_popup": 1, "extra": {"a": "new #2 ü", "gift": 7}}})");
  folder().write("pages/vip.html", R"(<!DOCTYPE html><script>
addEventListener('load', () => window.webkit.messageHandlers.ZOVKPopup.postMessage(
    JSON.stringify({action: 'skip', msg: location.search})));
</script>)");
  offer({conditional("vip", "/check/vip")});
  startService();
  startGame();
  await("Start to download remote Popup file");
  ZOVKPopup::showPopup("vip", 0, recordAnswer());
  pumpUntilAnswers(1);
  ASSERT_EQ(answers().front().first, 0);
  const auto told = boost::json::parse(answers().front().second);
  EXPECT_THAT(std::string(told.at("msg").as_string()),
              testing::AllOf(testing::StartsWith("?"), testing::HasSubstr("gift=7"),
                             testing::HasSubstr("a=new%20%232%20%C3%BC"),
                             testing::Not(testing::HasSubstr("a=1"))));
}

}  // namespace
}  // namespace zovk
