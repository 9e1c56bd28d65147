#include <boost/json/parse.hpp>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

// What pages post, of every JSON type, on both channels.
class PageMessage : public ControllerFixture {
 protected:
  PageMessage() {
    ZOVKPopupModel popup = webPage("a");
    popup.report_url = "https://report.example/a";
    show({popup});
  }
  void receive(const char* channel, const std::string& json) {
    page()->postMessage(channel, boost::json::parse(json));
    settle();
  }
  std::vector<std::string> errors() { return errorMessages(log()); }
};

TEST_F(PageMessage, TheTextOfAnObjectOnThePopupChannelIsTheChoice) {
  receive("ZOVKPopup", R"("{\"action\":\"commit\",\"msg\":\"ok\"}")");
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit", "ok")}}));
}

TEST_F(PageMessage, AChoiceWithoutAMessageHasAnEmptyOne) {
  receive("ZOVKPopup", R"("{\"action\":\"skip\"}")");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
}

TEST_F(PageMessage, EveryWordOfTheOtherChannelIsACommit) {
  for (const char* word : {"confirm", "reject", "cancel"}) {
    ZOVKPopupModel popup = webPage("a");
    popup.report_url = "https://report.example/a";
    show({popup});
    receive("__qvOpenSdk", std::string(R"({"action":")") + word + R"(","msg":")" + word + R"("})");
    EXPECT_EQ(answers().back(), (Answer{1, resultText("commit", word)}));
  }
}

TEST_F(PageMessage, AMessageThatIsAnObjectBecomesEmpty) {
  receive("__qvOpenSdk", R"({"action":"reject","msg":{"a":1}})");
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit")}}));
}

TEST_F(PageMessage, NothingElseReachesThePopup) {
  const std::vector<std::string> onPopupChannel = {"null",
                                                   "true",
                                                   "1",
                                                   "1.5",
                                                   "[]",
                                                   R"(["skip"])",
                                                   R"({"action":"skip","msg":""})",
                                                   R"("")",
                                                   R"("skip")",
                                                   R"("[\"skip\"]")",
                                                   R"("null")",
                                                   R"("{\"action\":\"Skip\"}")",
                                                   R"("{\"action\":\"confirm\"}")",
                                                   R"("{\"action\":1}")",
                                                   R"("{}")"};
  for (const std::string& body : onPopupChannel) {
    receive("ZOVKPopup", body);
    EXPECT_TRUE(answers().empty()) << body;
  }
  const std::vector<std::string> onOtherChannel = {"null",
                                                   "false",
                                                   "0",
                                                   "[]",
                                                   R"("{\"action\":\"confirm\"}")",
                                                   R"({"action":"commit"})",
                                                   R"({"action":"Confirm"})",
                                                   R"({"action":null})",
                                                   R"({"action":["confirm"]})",
                                                   "{}"};
  for (const std::string& body : onOtherChannel) {
    receive("__qvOpenSdk", body);
    EXPECT_TRUE(answers().empty()) << body;
  }
  page()->postMessage("ZOVKPopup", std::nullopt);
  page()->postMessage("__qvOpenSdk", std::nullopt);
  EXPECT_FALSE(page()->postMessage("other", boost::json::value("x")));
  EXPECT_EQ(sceneOnScreen(), "a");
}

TEST_F(PageMessage, GivenDirectlyAnObjectOrItsTextIsACommitWithoutAMessage) {
  for (const char* json : {R"({"action":"cancel","msg":"x"})",
                           R"("{\"action\":\"cancel\",\"msg\":\"x\"}")", "{}", R"("{}")"}) {
    ZOVKPopupModel popup = webPage("a");
    popup.report_url = "https://report.example/a";
    show({popup});
    controller().handleWebViewJsMessage(2, boost::json::parse(json));
    settle();
    EXPECT_EQ(answers().back(), (Answer{1, resultText("commit")})) << json;
  }
}

TEST_F(PageMessage, GivenDirectlyAnythingElseIsAnError) {
  log().clear();
  controller().handleWebViewJsMessage(1, std::nullopt);
  EXPECT_THAT(errors(), ElementsAre("Param jsMessage illegal"));
  for (const char* json : {"null", "1", "true", "[]", R"("")", R"("{")", R"("[1]")", R"("1")"}) {
    log().clear();
    controller().handleWebViewJsMessage(1, boost::json::parse(json));
    EXPECT_THAT(errors(), ElementsAre("Param jsMessage illegal")) << json;
  }
  settle();
  EXPECT_TRUE(answers().empty());
}

TEST_F(PageMessage, GivenDirectlyAsATextMayLieFiveHundredAndTwelveLevelsDeep) {
  const auto nested = [](std::size_t depth) {
    return R"({"a":)" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}";
  };
  log().clear();
  controller().handleWebViewJsMessage(1, boost::json::value(nested(513)));
  EXPECT_THAT(errors(), ElementsAre("Param jsMessage illegal"));
  EXPECT_TRUE(answers().empty());
  controller().handleWebViewJsMessage(1, boost::json::value(nested(512)));
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit")}}));
}

TEST_F(PageMessage, GivenDirectlyIsLogged) {
  controller().handleWebViewJsMessage(2, boost::json::value("text"));
  controller().handleWebViewJsMessage(1, std::nullopt);
  controller().handleWebViewJsMessage(0, boost::json::value(boost::json::array{1}));
  const auto lines = controllerMessages(log());
  EXPECT_THAT(lines, Contains("Handle webview js message, action:2 message:text"));
  EXPECT_THAT(lines, Contains("Handle webview js message, action:1 message:(null)"));
  EXPECT_THAT(lines, Contains("Handle webview js message, action:0 message:[1]"));
}

}  // namespace
}  // namespace zovk
