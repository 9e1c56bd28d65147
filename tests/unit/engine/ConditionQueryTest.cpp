#include <boost/json/parse.hpp>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::StartsWith;

// The service is asked before a conditional popup is queued.
class ConditionQuery : public EngineFixture {
 protected:
  ConditionQuery() {
    engine().setMergePopupArr(listOf({asked()}));
    log().clear();
  }
  static ZOVKPopupModel asked() {
    ZOVKPopupModel popup = conditional("asked");
    popup.pop_id = 31;
    return popup;
  }
  void request() { engine().showPopup("asked", 0, recordAnswer()); }
  void answer(const std::string& body, int status = 200) {
    log().clear();
    memory().urlSession.answer("check.example", status, body);
  }
  void expectNothingShown() {
    EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
    EXPECT_TRUE(engine().popupCache().empty());
  }
  std::vector<std::string> debug() { return debugMessages(log()); }
  std::vector<std::string> lines() { return shortLines(log()); }
};

TEST_F(ConditionQuery, TellsWhoThePlayerIsAndWhichPopupItIsAbout) {
  engine().startPopup("https://service.example", "1001", "secret");
  engine().setChannelID(7, "open", "token", "jwt");
  request();
  EXPECT_THAT(debug(), Contains("Query condition Popup"));
  const MemoryRequest sent = memory().urlSession.requestsTo("check.example").at(0);
  EXPECT_EQ(sent.method, "POST");
  EXPECT_EQ(boost::json::parse(sent.body.value()),
            boost::json::parse(R"({"channel_id":7,"gopenid":"open","token":"token",)"
                               R"("jwt_token":"jwt","pop_id":31,"scene":"asked"})"));
  const std::string parameters =
      "game_id=1001&install_id=" + *fileManager().getUUID() + "&os=2&version=1.0.0";
  EXPECT_EQ(sent.url, "https://check.example/asked?" + parameters +
                          "&sig=" + md5Hex("/asked?" + parameters + *sent.body + "secret"));
}

TEST_F(ConditionQuery, KeepsTheQueryOfItsAddress) {
  ZOVKPopupModel popup = asked();
  popup.check_url += "?a=1";
  engine().setMergePopupArr(listOf({popup}));
  request();
  EXPECT_THAT(memory().urlSession.request(0).url,
              StartsWith("https://check.example/asked?a=1&game_id="));
}

TEST_F(ConditionQuery, OfAPlayerNobodyNamedCarriesEmptyTexts) {
  request();
  EXPECT_EQ(boost::json::parse(memory().urlSession.request(0).body.value()),
            boost::json::parse(R"({"channel_id":1,"gopenid":"","token":"","jwt_token":"",)"
                               R"("pop_id":31,"scene":"asked"})"));
}

TEST_F(ConditionQuery, ShowsNothingUntilTheAnswer) {
  request();
  settle();
  expectNothingShown();
  EXPECT_TRUE(answers().empty());
}

TEST_F(ConditionQuery, ThatSaysYesQueuesThePopupWhosePageAsksOnceMore) {
  request();
  answer(R"({"need_popup":1})");
  settle();
  EXPECT_THAT(debug(), Contains("Query condition Popup result:1, respData length:16"));
  EXPECT_THAT(debug(), Contains("Query condition Popup request success"));
  EXPECT_THAT(debug(), Contains("Need to show condition Popup"));
  EXPECT_EQ(memory().urlSession.requestsTo("check.example").size(), 2U);
  EXPECT_EQ(page()->lastLoad(), "");
  answer(R"({"need_popup":1})");
  settle();
  EXPECT_EQ(page()->lastLoad(), asked().uri);
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
}

TEST_F(ConditionQuery, ThatSaysYesIsLoggedQueuedAndShown) {
  request();
  answer(R"({"need_popup":1})");
  memory().urlSession.deliver();
  EXPECT_THAT(debug(), ElementsAre("Query condition Popup result:1, respData length:16",
                                   "Query condition Popup request success",
                                   "jsonInfo:{\"need_popup\":1}", "Need to show condition Popup",
                                   StartsWith("Cache Popup, Popup count:1, complete:0x"),
                                   "Cache callback done", "Show Popup", "Get Popup from cache"));
  EXPECT_TRUE(engine().isPopuping());
}

TEST_F(ConditionQuery, ThatSaysYesNeedsNoExtraValues) {
  for (const char* body :
       {R"({"need_popup":1})", R"({"need_popup":1,"extra":null})", R"({"need_popup":1,"extra":{}})",
        R"({"need_popup":1,"extra":{"a":1}})"}) {
    request();
    answer(body);
    memory().urlSession.deliver();
    EXPECT_THAT(debug(), Contains("Need to show condition Popup")) << body;
  }
  EXPECT_EQ(engine().popupCache().size(), 4U);
}

TEST_F(ConditionQuery, ThatSaysNoEndsFromTheMainQueueAsASkip) {
  request();
  answer(R"({"need_popup":0,"extra":{"a":1}})");
  memory().urlSession.deliver();
  EXPECT_TRUE(answers().empty());
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_THAT(debug(),
              ElementsAre("Query condition Popup result:1, respData length:32",
                          "Query condition Popup request success",
                          "jsonInfo:{\"need_popup\":0,\"extra\":{\"a\":1}}",
                          "No need to show condition Popup", "Do callback", "Do callback"));
  expectNothingShown();
}

TEST_F(ConditionQuery, ThatIsAnsweredWithAnythingElseCountsAsNo) {
  for (const char* body : {"", "<html>", "[1]", "1", "{}", R"({"need_popup":2})"}) {
    request();
    answer(body, 503);
    settle();
    EXPECT_EQ(answers().back(), (Answer{0, "reatin complete"})) << body;
    EXPECT_THAT(debug(), Contains("No need to show condition Popup")) << body;
  }
  EXPECT_EQ(answers().size(), 6U);
  expectNothingShown();
}

TEST_F(ConditionQuery, ThatFailsEndsFromTheMainQueueAsASkip) {
  request();
  log().clear();
  memory().urlSession.fail("check.example", "no network");
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_THAT(
      lines(),
      ElementsAre(StartsWith("E Request url:https://check.example/asked"),
                  "D queryConditionPopup: Query condition Popup result:0, respData length:0",
                  "E Query condition Popup request failed", "D doCallback: Do callback",
                  "D doCallback: Do callback"));
  expectNothingShown();
}

TEST_F(ConditionQuery, WithoutAnAddressFailsLikeAnyOther) {
  ZOVKPopupModel popup = asked();
  popup.check_url = "";
  engine().setMergePopupArr(listOf({popup}));
  request();
  EXPECT_TRUE(answers().empty());
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_THAT(errorMessages(log()),
              ElementsAre("Url illegal", "Query condition Popup request failed"));
}

TEST_F(ConditionQuery, NeedsNoCallback) {
  engine().queryConditionPopup(engine().mergePopupArr().front(), nullptr);
  answer(R"({"need_popup":0})");
  settle();
  EXPECT_EQ(lines().back(), "D queryConditionPopup: No need to show condition Popup");
  engine().queryConditionPopup(engine().mergePopupArr().front(), nullptr);
  memory().urlSession.fail("check.example", "no network");
  settle();
  EXPECT_EQ(lines().back(), "E Query condition Popup request failed");
  expectNothingShown();
}

TEST_F(ConditionQuery, OfARequestWithoutACallbackEndsInSilence) {
  for (const char* body : {R"({"need_popup":0})", "<html>"}) {
    engine().showPopup("asked", 0, nullptr);
    answer(body);
    settle();
    EXPECT_EQ(lines().back(), "D doCallback: Do callback") << "the request's own, not the host's";
  }
  expectNothingShown();
}

}  // namespace
}  // namespace zovk
