#include "e2e/bridge/BridgePageFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Messages = BridgePageFixture;

TEST_F(Messages, OfThePageReachTheGameAndTheResponseThePage) {
  open(bridgePage("bridge.callHandler('double', 'wick', all => bridge.callHandler('tell', all));"));
  awaitTold(1);
  EXPECT_THAT(told(), ElementsAre("wickwick"));
  EXPECT_THAT(bridgeLines(), IsEmpty());
}

TEST_F(Messages, OfTheGameReachThePageAndTheResponseTheGame) {
  open(
      bridgePage("bridge.registerHandler('spell', (data, respond) => respond([...data.word]));"
                 "bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  Value answer;
  bridge().callHandler("spell", boost::json::object{{"word", "a'\"\\\n\u2028é"}},
                       [&](const Value& data) { answer = data; });
  pumpUntil([&] { return answer.has_value(); }, "the page's answer");
  EXPECT_EQ(*answer, (boost::json::array{"a", "'", "\"", "\\", "\n", "\u2028", "é"}));
}

TEST_F(Messages, WithoutDataOrWithNothingAsResponseArriveAsNull) {
  open(bridgePage(
      "bridge.registerHandler('nothing', (data, respond) => {"
      "  bridge.callHandler('tell', typeof data); respond(null); });"
      "bridge.callHandler('silent', answer => bridge.callHandler('tell', String(answer)));"));
  bridge().registerHandler("silent", [](const Value& data, const Respond& respond) {
    EXPECT_EQ(data, Value(nullptr));
    respond(std::nullopt);
  });
  awaitTold(1);
  Value answer;
  bridge().callHandler("nothing", std::nullopt, [&](const Value& data) { answer = data; });
  pumpUntil([&] { return answer.has_value(); }, "the page's answer");
  EXPECT_EQ(answer, Value(nullptr));
  awaitTold(2);
  EXPECT_THAT(told(), ElementsAre("null", "undefined"));
}

TEST_F(Messages, ThatAPageSendsBeforeTheyAreFetchedTravelTogether) {
  open(bridgePage(
      "const fetchQueue = bridge._fetchQueue; window.fetched = [];"
      "bridge._fetchQueue = () => {"
      "  const queue = fetchQueue(); fetched.push(JSON.parse(queue).length); return queue; };"
      "bridge.callHandler('tell', 'one'); bridge.callHandler('tell', 'two');"));
  awaitTold(2);
  EXPECT_THAT(told(), ElementsAre("one", "two"));
  EXPECT_EQ(evaluate("Math.max(...fetched)"), 2);
}

TEST_F(Messages, ThatTheGameSendsEarlyWaitForThePageAndKeepTheirOrder) {
  open(
      bridgePage("bridge.registerHandler('note', (data, respond) => {"
                 "  bridge.callHandler('tell', data); if (respond) respond(data); });"
                 "bridge.callHandler('tell', 'ready');"));
  std::vector<std::string> answers;
  const auto note = [&](const Value& data) { answers.push_back(textOf(data)); };
  bridge().callHandler("note", boost::json::value("early"), note);
  bridge().callHandler("note", boost::json::value("second"), note);
  awaitTold(3);
  bridge().callHandler("note", boost::json::value("late"), note);
  awaitTold(4);
  pumpUntil([&] { return answers.size() == 3; }, "three answers");
  EXPECT_THAT(told(), ElementsAre("ready", "early", "second", "late"));
  EXPECT_THAT(answers, ElementsAre("early", "second", "late"));
}

TEST_F(Messages, GoOnWhenThePageAsksForTheBridgeOnceMore) {
  open(bridgePage(
      "bridge.registerHandler('note', data => bridge.callHandler('tell', data));"
      "window.first = bridge; askForBridge(); askForBridge('wvjbscheme://__BRIDGE_LOADED__/x?y');"
      "bridge.callHandler('tell', 'asked');"));
  awaitTold(1);
  bridge().callHandler("note", boost::json::value("still there"));
  awaitTold(2);
  EXPECT_THAT(told(), ElementsAre("asked", "still there"));
  EXPECT_EQ(evaluate("window.first === window.WebViewJavascriptBridge"), true);
}

TEST_F(Messages, WithoutAHandlerAreReportedAndDropped) {
  open(bridgePage("bridge.callHandler('nobody', {a: 1}); bridge.callHandler('tell', 'next');"));
  awaitTold(1);
  EXPECT_THAT(bridgeLines(), ElementsAre("WVJBNoHandlerException, No handler for message from JS: "
                                         R"({"handlerName":"nobody","data":{"a":1}})"));
}

TEST_F(Messages, OfAPageWithoutStartUpCallbacksFailWhereThePageHearsIt) {
  open(
      page("window.errors = []; window.onerror = message => { errors.push(message); };"
           "askForBridge();"));
  awaitTrue("errors.length > 0");
  EXPECT_THAT(textOf(evaluate("errors[0]")), testing::HasSubstr("TypeError"));
  EXPECT_EQ(evaluate("typeof WebViewJavascriptBridge"), "object");
}

TEST_F(Messages, OfAPageWithoutAnErrorHandlerGetOne) {
  open(page("askForBridge();"));
  awaitTrue("typeof WebViewJavascriptBridge === 'object'");
  EXPECT_EQ(evaluate("typeof window.onerror"), "function");
}

/// Returns what a page has noted right after it received a message.
constexpr const char* kNotedAtOnce =
    "window.noted = false;"
    "WebViewJavascriptBridge._handleMessageFromObjC('{\"handlerName\":\"note\"}');"
    "window.noted";
constexpr const char* kNoting =
    "bridge.registerHandler('note', () => { alert('seen by nobody'); window.noted = true; });"
    "bridge.callHandler('tell', 'ready');";

TEST_F(Messages, AreHandledOnATurnOfTheirOwnSoThatDialogsHoldNothingUp) {
  open(bridgePage(kNoting));
  awaitTold(1);
  EXPECT_EQ(evaluate(kNotedAtOnce), false);
  awaitTrue("window.noted");
}

TEST_F(Messages, AreHandledAtOnceWhenTheGameWantsIt) {
  open(bridgePage(kNoting));
  bridge().disableJavscriptAlertBoxSafetyTimeout();
  awaitTold(1);
  awaitTrue(kNotedAtOnce);  // the wish itself is handled on a turn of its own
}

TEST_F(Messages, AreHandledAtOnceWhenThePageWantsIt) {
  open(bridgePage("bridge.disableJavscriptAlertBoxSafetyTimeout();" + std::string(kNoting)));
  awaitTold(1);
  EXPECT_EQ(evaluate(kNotedAtOnce), true);
}

}  // namespace
}  // namespace zovk
