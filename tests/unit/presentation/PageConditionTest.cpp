#include <boost/json/parse.hpp>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::Not;

// A conditional popup's turn has come: the service is asked whether to show it now.
class PageCondition : public ControllerFixture {
 protected:
  void answer(const std::string& body) {
    log().clear();
    memory().urlSession.answer("check.example", 200, body);
    settle();
  }
  std::vector<std::string> debug() { return controllerMessages(log()); }
};

TEST_F(PageCondition, IsAskedWithThePlayerAndThePopup) {
  ZOVKPopupModel popup = conditional("asked");
  popup.pop_id = 31;
  show({popup});
  EXPECT_THAT(debug(), Contains("Query condition Popup"));
  ASSERT_EQ(memory().urlSession.requestCount(), 1U);
  const MemoryRequest sent = memory().urlSession.request(0);
  EXPECT_EQ(sent.method, "POST");
  EXPECT_EQ(boost::json::parse(sent.body.value()), (boost::json::value{{"channel_id", 7},
                                                                       {"gopenid", "open"},
                                                                       {"token", "token"},
                                                                       {"jwt_token", "jwt"},
                                                                       {"pop_id", 31},
                                                                       {"scene", "asked"}}));
  const std::string parameters =
      "game_id=1001&install_id=" + *fileManager().getUUID() + "&os=2&version=1.0.0";
  EXPECT_EQ(sent.url, "https://check.example/asked?" + parameters +
                          "&sig=" + md5Hex("/asked?" + parameters + *sent.body + "key"));
}

TEST_F(PageCondition, IsAskedWithAllSixValuesForAPlayerWhoIsNotSignedIn) {
  const auto lone = makeController();
  lone->setLoginState("1001", "key", std::make_shared<LoginStateRecord>());
  const ZOVKPopupModel popup = conditional("asked");
  lone->showPopup(listOf({popup}), window().get(), nullptr);
  settle();
  EXPECT_EQ(boost::json::parse(memory().urlSession.request(0).body.value()),
            (boost::json::value{{"channel_id", 1},
                                {"gopenid", ""},
                                {"token", ""},
                                {"jwt_token", ""},
                                {"pop_id", popup.pop_id},
                                {"scene", "asked"}}));
}

TEST_F(PageCondition, IsAskedWithThePlayerAsTheHostSetItDuringTheRun) {
  show({webPage("first"), conditional("asked")});
  loginState().set({9, "other", "", ""});
  press("crossButtonClicked");
  const auto body = boost::json::parse(memory().urlSession.request(0).body.value()).as_object();
  EXPECT_EQ(body.at("channel_id"), 9);
  EXPECT_EQ(body.at("gopenid"), "other");
}

TEST_F(PageCondition, LoadsNoPageButSetsTheButtonsWhileItIsAsked) {
  show({conditional("asked")});
  EXPECT_TRUE(page()->loads().empty());
  EXPECT_EQ(sceneOnScreen(), "asked");
  EXPECT_TRUE(layout()->view("returnBtn").hidden);
}

TEST_F(PageCondition, ThatHoldsLoadsThePageWithTheExtraParameters) {
  ZOVKPopupModel popup = conditional("asked");
  popup.uri += "?a=1";
  show({popup});
  answer(R"({"need_popup":1,"extra":{"b":"x y"}})");
  EXPECT_EQ(page()->lastLoad(), webPage("asked").uri + "?a=1&b=x%20y");
  EXPECT_THAT(debug(), Contains("Query condition Popup result:1, respData length:36"));
  EXPECT_THAT(debug(), Contains("Query condition Popup request success"));
  EXPECT_THAT(debug(), Contains("Need to show condition Popup"));
  press("refreshButtonClicked");
  EXPECT_EQ(page()->loads().size(), 2U);
  EXPECT_EQ(page()->lastLoad(), webPage("asked").uri + "?a=1&b=x%20y");
}

TEST_F(PageCondition, ThatHoldsWithoutExtraParametersLoadsThePageUnchanged) {
  for (const char* body : {R"({"need_popup":"1"})", R"({"need_popup":1,"extra":[1]})"}) {
    show({conditional("asked")});
    answer(body);
    EXPECT_EQ(page()->lastLoad(), webPage("asked").uri) << body;
  }
}

TEST_F(PageCondition, PutsNumbersIntoTheAddressAsPeopleWriteThem) {
  show({conditional("asked")});
  answer(R"({"need_popup":1,"extra":{"a":0.5,"b":100.0,"c":[1]}})");
  EXPECT_EQ(page()->lastLoad(), webPage("asked").uri + "?a=0.5&b=100&c=%5B1%5D");
}

TEST_F(PageCondition, OfAPageFileDropsTheExtraParameters) {
  ZOVKPopupModel popup = pageFile("asked");
  popup.pop_freq = 3;
  popup.check_url = "https://check.example/asked";
  show({popup});
  answer(R"({"need_popup":1,"extra":{"a":"b"}})");
  EXPECT_EQ(page()->lastLoad(), "file://" + popup.getPopupFilePath());
}

TEST_F(PageCondition, ThatDoesNotHoldPassesThePopupOver) {
  for (const char* body : {R"({"need_popup":0})", "<html>", "[1]", "{}"}) {
    show({conditional("asked"), webPage("next")});
    answer(body);
    EXPECT_EQ(page()->lastLoad(), webPage("next").uri) << body;
    EXPECT_THAT(debug(), Contains("No need to show condition Popup"));
    EXPECT_TRUE(answers().empty());
  }
  EXPECT_TRUE(memory().urlSession.requestsTo("report.example").empty());
}

TEST_F(PageCondition, ThatCannotBeAskedPassesThePopupOver) {
  show({conditional("asked"), webPage("next")});
  log().clear();
  memory().urlSession.fail("check.example", "no network");
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("next").uri);
  EXPECT_THAT(debug(), Contains("Query condition Popup result:0, respData length:0"));
  EXPECT_THAT(errorMessages(log()), Contains("Query condition Popup request failed"));
}

TEST_F(PageCondition, WithAnEmptyAnswerCountsAsFailed) {
  show({conditional("asked"), webPage("next")});
  log().clear();
  answer("");
  EXPECT_EQ(page()->lastLoad(), webPage("next").uri);
  EXPECT_THAT(debug(), Contains("Query condition Popup result:1, respData length:0"));
  EXPECT_THAT(errorMessages(log()), Contains("Query condition Popup request failed"));
}

TEST_F(PageCondition, WithoutAnAddressPassesThePopupOver) {
  ZOVKPopupModel popup = conditional("asked");
  popup.check_url = "";
  show({popup, webPage("next")});
  EXPECT_EQ(page()->lastLoad(), webPage("next").uri);
}

TEST_F(PageCondition, OfTheLastPopupThatDoesNotHoldEndsTheRunWithAnEmptyResult) {
  show({conditional("asked")});
  answer(R"({"need_popup":0})");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, ""}}));
}

TEST_F(PageCondition, AnsweredAfterTheWindowWasClosedDoesNothing) {
  for (const bool holds : {true, false}) {
    show({conditional("asked"), webPage("next")});
    const auto view = page();
    close();
    answer(holds ? R"({"need_popup":1})" : R"({"need_popup":0})");
    EXPECT_TRUE(view->loads().empty());
  }
  EXPECT_TRUE(answers().empty());
}

TEST_F(PageCondition, ClosedBetweenTheAnswerAndTheMainQueueDoesNothing) {
  show({conditional("asked")});
  const auto view = page();
  memory().urlSession.answer("check.example", 200, R"({"need_popup":1})");
  memory().urlSession.deliver();
  close();
  settle();
  EXPECT_TRUE(view->loads().empty());
}

TEST_F(PageCondition, KeepsItsControllerUntilTheAnswer) {
  auto lone = makeController();
  const std::weak_ptr<ZOVKPopupViewController> weak = lone;
  lone->showPopup(listOf({conditional("asked")}), window().get(), nullptr);
  settle();
  lone.reset();
  close();
  EXPECT_FALSE(weak.expired());
  answer(R"({"need_popup":0})");
  EXPECT_TRUE(weak.expired());
}

// The answer always counts for the popup that is on screen by then.
TEST_F(PageCondition, AnsweredAfterThePlayerWentOnAppliesToThePopupOnScreen) {
  show({conditional("asked"), webPage("next"), webPage("last")});
  press("crossButtonClicked");
  EXPECT_EQ(page()->lastLoad(), webPage("next").uri);
  answer(R"({"need_popup":1,"extra":{"a":"b"}})");
  EXPECT_EQ(page()->lastLoad(), webPage("next").uri + "?a=b");
  EXPECT_EQ(sceneOnScreen(), "next");
}

TEST_F(PageCondition, IsAnsweredForThePopupOfThatMomentThoughTheNextOneIsDue) {
  show({conditional("asked"), webPage("next"), webPage("last")});
  controller().crossButtonClicked();  // the next popup waits on the main queue
  memory().urlSession.answer("check.example", 200, R"({"need_popup":1,"extra":{"a":"b"}})");
  memory().urlSession.deliver();
  settle();
  ASSERT_EQ(page()->loads().size(), 2U);
  EXPECT_EQ(page()->loads()[0].url, webPage("asked").uri + "?a=b");
  EXPECT_EQ(page()->loads()[1].url, webPage("next").uri);
}

TEST_F(PageCondition, SetsThePageToRefreshAtOnce) {
  show({webPage("first"), conditional("asked")});
  press("crossButtonClicked");
  memory().urlSession.answer("check.example", 200, R"({"need_popup":1})");
  memory().urlSession.deliver();
  controller().refreshButtonClicked();
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("asked").uri);
  EXPECT_EQ(page()->loads().size(), 3U) << "the answer's load and the refresh";
}

TEST_F(PageCondition, RefusedAfterThePlayerWentOnPassesOverThePopupOnScreen) {
  show({conditional("asked"), webPage("next"), webPage("last")});
  press("crossButtonClicked");
  answer(R"({"need_popup":0})");
  EXPECT_EQ(sceneOnScreen(), "last");
}

TEST_F(PageCondition, MayBeAnsweredOnTheSessionsThread) {
  memory().urlSession.useThread();
  show({conditional("asked")});
  memory().urlSession.answer("check.example", 200, R"({"need_popup":1})");
  const auto view = page();
  memory().scheduler.runUntil([&] { return !view->loads().empty(); }, "the page");
  EXPECT_EQ(view->lastLoad(), webPage("asked").uri);
}

}  // namespace
}  // namespace zovk
