#include <boost/json/parse.hpp>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

class Report : public ControllerFixture {
 protected:
  Report() {
    ZOVKPopupModel popup = webPage("a");
    popup.pop_id = 31;
    popup.report_url = "https://report.example/a";
    show({popup});
  }
};

TEST_F(Report, TellsThePlayerThePopupAndTheChoiceAsJsonText) {
  choose("commit", "short");
  ASSERT_EQ(memory().urlSession.requestCount(), 1U);
  const MemoryRequest sent = memory().urlSession.request(0);
  EXPECT_EQ(sent.method, "POST");
  const boost::json::value body = boost::json::parse(sent.body.value());
  EXPECT_EQ(body, (boost::json::value{{"channel_id", 7},
                                      {"gopenid", "open"},
                                      {"token", "token"},
                                      {"jwt_token", "jwt"},
                                      {"pop_id", 31},
                                      {"scene", "a"},
                                      {"data", resultText("commit", "short")}}));
  const std::string parameters =
      "game_id=1001&install_id=" + *fileManager().getUUID() + "&os=2&version=1.0.0";
  EXPECT_EQ(sent.url, "https://report.example/a?" + parameters +
                          "&sig=" + md5Hex("/a?" + parameters + *sent.body + "key"));
}

TEST_F(Report, IsAboutThePopupOnScreenThoughOthersWait) {
  ZOVKPopupModel shown = webPage("shown");
  shown.pop_id = 32;
  shown.report_url = "https://report.example/shown";
  ZOVKPopupModel waiting = webPage("waiting");
  waiting.pop_id = 33;
  waiting.report_url = "https://report.example/waiting";
  show({shown, waiting});
  choose("commit");
  ASSERT_EQ(memory().urlSession.requestCount(), 1U);
  const MemoryRequest sent = memory().urlSession.requestsTo("report.example/shown").at(0);
  const boost::json::value body = boost::json::parse(sent.body.value());
  EXPECT_EQ(body.at("pop_id"), 32);
  EXPECT_EQ(body.at("scene"), "shown");
}

TEST_F(Report, TellsThePlayerAsTheHostSetItWhileThePopupWasUp) {
  loginState().set({9, "other", "new token", "new jwt"});
  choose("commit");
  const auto body = boost::json::parse(memory().urlSession.request(0).body.value()).as_object();
  EXPECT_EQ(body.at("channel_id"), 9);
  EXPECT_EQ(body.at("gopenid"), "other");
  EXPECT_EQ(body.at("token"), "newtoken");
  EXPECT_EQ(body.at("jwt_token"), "newjwt");
}

TEST_F(Report, IsNotWaitedFor) {
  choose("commit");
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_EQ(memory().urlSession.pendingCount(), 1U);
}

TEST_F(Report, ThatArrivesIsLoggedWhateverItsAnswer) {
  log().clear();
  choose("commit");
  memory().urlSession.answer("report.example", 500, "<html>");
  settle();
  const auto lines = controllerMessages(log());
  EXPECT_THAT(lines, Contains("Report user data result:1, respData length:6"));
  EXPECT_THAT(lines, Contains("Report user data request success"));
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(Report, WithAnEmptyAnswerHasArrived) {
  log().clear();
  choose("commit");
  memory().urlSession.answer("report.example", 204, "");
  settle();
  const auto lines = controllerMessages(log());
  EXPECT_THAT(lines, Contains("Report user data result:1, respData length:0"));
  EXPECT_THAT(lines, Contains("Report user data request success"));
  EXPECT_THAT(errorMessages(log()), IsEmpty());
}

TEST_F(Report, HoldsAllSevenValuesOfAPlayerWhoIsNotSignedIn) {
  const auto lone = makeController();
  lone->setLoginState("1001", "key", std::make_shared<LoginStateRecord>());
  ZOVKPopupModel popup = webPage("");
  popup.report_url = "https://report.example/b";
  lone->showPopup(listOf({popup}), window().get(), nullptr);
  settle();
  choose("commit");
  const MemoryRequest sent = memory().urlSession.requestsTo("report.example/b").at(0);
  EXPECT_EQ(boost::json::parse(sent.body.value()),
            (boost::json::value{{"channel_id", 1},
                                {"gopenid", ""},
                                {"token", ""},
                                {"jwt_token", ""},
                                {"pop_id", popup.pop_id},
                                {"scene", ""},
                                {"data", resultText("commit")}}));
}

TEST_F(Report, ThatFailsIsAnErrorLineAndNotRetried) {
  choose("commit");
  memory().urlSession.fail("report.example", "no network");
  settle();
  EXPECT_THAT(controllerMessages(log()), Contains("Report user data result:0, respData length:0"));
  EXPECT_THAT(errorMessages(log()), Contains("Report user data request failed"));
  EXPECT_EQ(memory().urlSession.requestCount(), 1U);
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit")}}));
}

TEST_F(Report, KeepsNothingOfTheControllerAlive) {
  const auto lone = makeController();
  const std::weak_ptr<ZOVKPopupViewController> weak = lone;
  ZOVKPopupModel popup = webPage("b");
  popup.report_url = "https://report.example/b";
  lone->showPopup(listOf({popup}), window().get(), nullptr);
  settle();
  choose("commit");
  close();
  EXPECT_EQ(memory().urlSession.pendingCount(), 1U);
  EXPECT_EQ(weak.use_count(), 1);
}

}  // namespace
}  // namespace zovk
