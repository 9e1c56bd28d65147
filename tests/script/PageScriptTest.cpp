#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bridge/ZOVKPopupWebViewJavascriptBridge_js.h"
#include "script/ScriptEngine.h"

namespace zovk {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

const std::string kSignal = "https://__wvjb_queue_message__";

class PageScript : public ::testing::Test {
 protected:
  std::string inject() { return engine_.run(ZOVKPopupWebViewJavascriptBridge_js()); }
  /// Injects into a page that waits for the bridge as pages should, and lets it settle.
  void open() {
    run("window.WVJBCallbacks = []");
    inject();
    engine_.runTimers();
    run("page.signals = []; page.log = []; page.delays = []");
  }
  std::string run(const std::string& script) { return engine_.run(script); }
  std::string json(const std::string& expression) {
    return run("JSON.stringify(" + expression + ")");
  }
  std::string fetch() { return run("WebViewJavascriptBridge._fetchQueue()"); }
  /// The game sends a message; `text` is JSON without backslashes and single quotes.
  void receive(const std::string& text) {
    run("WebViewJavascriptBridge._handleMessageFromObjC('" + text + "')");
  }
  void receiveAndSettle(const std::string& text) {
    receive(text);
    engine_.runTimers();
  }

  ScriptEngine engine_;
};

TEST_F(PageScript, BeginsWithASemicolonSoThatItMayFollowAnyScript) {
  EXPECT_THAT(ZOVKPopupWebViewJavascriptBridge_js(), StartsWith(";"));
  run("window.WVJBCallbacks = []");
  run("var before = function () { return 1; }\n" + ZOVKPopupWebViewJavascriptBridge_js());
  EXPECT_EQ(run("before()"), "1");
  EXPECT_EQ(run("typeof WebViewJavascriptBridge == 'object';"), "true");
}

TEST_F(PageScript, AddsNothingToThePageButTheBridgeAndAnErrorHandler) {
  run("window.WVJBCallbacks = []; var before = Object.keys(window).concat('before')");
  inject();
  engine_.runTimers();
  EXPECT_EQ(json("Object.keys(window).filter(function (key) { return before.indexOf(key) < 0; })"),
            R"(["onerror","WebViewJavascriptBridge"])");
}

TEST_F(PageScript, GivesThePageFiveOperations) {
  inject();
  EXPECT_EQ(json("Object.keys(WebViewJavascriptBridge).sort()"),
            R"(["_fetchQueue","_handleMessageFromObjC","callHandler",)"
            R"("disableJavscriptAlertBoxSafetyTimeout","registerHandler"])");
  EXPECT_EQ(run("Object.keys(WebViewJavascriptBridge).every(function (name) {"
                "  return typeof WebViewJavascriptBridge[name] === 'function'; })"),
            "true");
}

TEST_F(PageScript, InjectedTwiceLeavesOneBridgeAndItsHandlers) {
  open();
  run("var first = WebViewJavascriptBridge, told = [];"
      "first.registerHandler('a', function (data) { told.push(data); })");
  inject();
  engine_.runTimers();
  EXPECT_EQ(run("first === WebViewJavascriptBridge"), "true");
  EXPECT_EQ(run("page.frames.length"), "1");
  EXPECT_EQ(json("page.signals"), "[]");
  receiveAndSettle(R"({"handlerName":"a","data":1})");
  EXPECT_EQ(json("told"), "[1]");
}

TEST_F(PageScript, InstallsAnErrorHandlerWhereThereIsNone) {
  inject();
  run("window.onerror('broken', 'https://page/a.js', 12)");
  EXPECT_EQ(json("page.log"),
            R"([["WebViewJavascriptBridge: ERROR:broken@https://page/a.js:12"]])");
}

TEST_F(PageScript, KeepsAnErrorHandlerThatIsThere) {
  run("var own = function () {}; window.onerror = own");
  inject();
  EXPECT_EQ(run("window.onerror === own"), "true");
}

TEST_F(PageScript, MakesAHiddenFrameAndSignalsBeforeItIsInThePage) {
  run("document.documentElement.appendChild = function (frame) {"
      "  page.frames.push(frame); page.signalsThen = page.signals.length; }");
  inject();
  EXPECT_EQ(json("page.frames"), R"([{"kind":"iframe","style":{"display":"none"}}])");
  EXPECT_EQ(json("page.signals"), "[\"" + kSignal + "\"]");
  EXPECT_EQ(run("page.signalsThen"), "1");
  EXPECT_EQ(fetch(), "[]");
}

TEST_F(PageScript, CallsWhatThePageLeftForItInOrderAndLater) {
  run("var told = []; window.WVJBCallbacks = ["
      "  function (bridge) { told.push(1, bridge === WebViewJavascriptBridge); },"
      "  function () { told.push(2, typeof window.WVJBCallbacks); }]");
  inject();
  EXPECT_EQ(json("told"), "[]");
  EXPECT_EQ(json("page.delays"), "[0]");
  engine_.runTimers();
  EXPECT_EQ(json("told"), R"([1,true,2,"undefined"])");
  EXPECT_EQ(json("page.errors"), "[]");
}

TEST_F(PageScript, FailsIntoTheErrorHandlerWhenThePageLeftNothing) {
  inject();
  engine_.runTimers();
  EXPECT_EQ(json("page.errors"), R"(["TypeError"])");
  EXPECT_THAT(run("page.log[0][0]"), StartsWith("WebViewJavascriptBridge: ERROR:"));
  EXPECT_THAT(run("page.log[0][0]"), HasSubstr("@https://page/:7"));
  EXPECT_EQ(run("typeof WebViewJavascriptBridge"), "object");
}

TEST_F(PageScript, SendsAMessageToTheGameAndSignals) {
  open();
  run("WebViewJavascriptBridge.callHandler('a', {b: [1]})");
  EXPECT_EQ(json("page.signals"), "[\"" + kSignal + "\"]");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a","data":{"b":[1]}}])");
}

TEST_F(PageScript, SeveralMessagesTravelTogether) {
  open();
  run("WebViewJavascriptBridge.callHandler('a', 1); WebViewJavascriptBridge.callHandler('b', 2)");
  EXPECT_EQ(run("page.signals.length"), "2");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a","data":1},{"handlerName":"b","data":2}])");
  EXPECT_EQ(fetch(), "[]");
}

TEST_F(PageScript, AMessageIsInTheQueueWhenTheSignalComes) {
  open();
  run("var fetched; page.signals.push = function () {"
      "  fetched = WebViewJavascriptBridge._fetchQueue(); };"
      "WebViewJavascriptBridge.callHandler('a', 1)");
  EXPECT_EQ(run("fetched"), R"([{"handlerName":"a","data":1}])");
}

TEST_F(PageScript, LeavesOutDataThatIsNotGiven) {
  open();
  run("WebViewJavascriptBridge.callHandler('a')");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a"}])");
}

TEST_F(PageScript, AFunctionAsSecondOfTwoArgumentsIsTheCallback) {
  open();
  run("WebViewJavascriptBridge.callHandler('a', function () {})");
  EXPECT_EQ(run("Object.keys(JSON.parse(WebViewJavascriptBridge._fetchQueue())[0]).join()"),
            "handlerName,data,callbackId");
  run("WebViewJavascriptBridge.callHandler('a', function () {})");
  EXPECT_EQ(run("JSON.parse(WebViewJavascriptBridge._fetchQueue())[0].data"), "null");
  run("WebViewJavascriptBridge.callHandler('a', function () {}, undefined)");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a"}])") << "of three it is data, which JSON leaves out";
}

TEST_F(PageScript, CallbackIdentifiersCountAndCarryTheTime) {
  open();
  run("Date.prototype.getTime = function () { return 1700000000123; }");
  run("for (var i = 0; i < 2; i++) WebViewJavascriptBridge.callHandler('a', 1, function () {});"
      "WebViewJavascriptBridge.callHandler('a', 1)");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a","data":1,"callbackId":"cb_1_1700000000123"},)"
                     R"({"handlerName":"a","data":1,"callbackId":"cb_2_1700000000123"},)"
                     R"({"handlerName":"a","data":1}])");
}

TEST_F(PageScript, AResponseReachesItsCallbackOnce) {
  open();
  run("Date.prototype.getTime = function () { return 5; }; var told = [];"
      "WebViewJavascriptBridge.callHandler('a', 1, function (data) { told.push(data); })");
  for (int i = 0; i < 2; ++i) receiveAndSettle(R"({"responseId":"cb_1_5","responseData":{"x":1}})");
  EXPECT_EQ(json("told"), R"([{"x":1}])");
  EXPECT_EQ(json("page.log"), "[]");
}

TEST_F(PageScript, ACallbackIsStillKeptWhileItRuns) {
  open();
  run("Date.prototype.getTime = function () { return 5; }; var told = [];"
      "WebViewJavascriptBridge.disableJavscriptAlertBoxSafetyTimeout();"
      "WebViewJavascriptBridge.callHandler('a', 1, function (data) {"
      "  told.push(data);"
      "  if (told.length === 1) WebViewJavascriptBridge._handleMessageFromObjC("
      "      '{\"responseId\":\"cb_1_5\",\"responseData\":2}'); })");
  receive(R"({"responseId":"cb_1_5","responseData":1})");
  receive(R"({"responseId":"cb_1_5","responseData":3})");
  EXPECT_EQ(json("told"), "[1,2]");
}

TEST_F(PageScript, AResponseToNothingIsIgnored) {
  open();
  run("var told = []; WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); })");
  receiveAndSettle(R"({"responseId":"cb_9_9","responseData":1,"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[]");
  EXPECT_EQ(json("page.log"), "[]");
  EXPECT_EQ(json("page.errors"), "[]");
}

TEST_F(PageScript, AMessageWithAResponseIdIsAResponseWhateverThatIs) {
  open();
  run("var told = []; WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); })");
  for (const std::string odd : {R"("")", "0", "null", "false", "{}", "[]"}) {
    receiveAndSettle(R"({"handlerName":"a","callbackId":"objc_cb_1","responseId":)" + odd + "}");
  }
  EXPECT_EQ(json("told"), "[]");
  EXPECT_EQ(fetch(), "[]");
  EXPECT_EQ(json("page.log"), "[]");
  EXPECT_EQ(json("page.errors"), "[]");
}

TEST_F(PageScript, ARequestIsAnsweredUnderItsCallbackIdWhateverThatIs) {
  open();
  run("WebViewJavascriptBridge.registerHandler('a', function (data, respond) { respond(7); })");
  for (const std::string odd : {R"("")", "0", "null", "false", "{}", "[1]"}) {
    receiveAndSettle(R"({"handlerName":"a","callbackId":)" + odd + "}");
    EXPECT_EQ(fetch(), R"([{"handlerName":"a","responseId":)" + odd + R"(,"responseData":7}])");
  }
}

TEST_F(PageScript, AHandlerIsToldDataAndNoCallbackWhenNoneIsWanted) {
  open();
  run("var told; WebViewJavascriptBridge.registerHandler('a', function () { told = arguments; })");
  receiveAndSettle(R"({"handlerName":"a","data":[1,null]})");
  EXPECT_EQ(json("told[0]"), "[1,null]");
  EXPECT_EQ(run("told.length + typeof told[1]"), "2undefined");
  receiveAndSettle(R"({"handlerName":"a"})");
  EXPECT_EQ(run("typeof told[0]"), "undefined");
}

TEST_F(PageScript, AHandlersResponseNamesHandlerAndCallback) {
  open();
  run("var kept; WebViewJavascriptBridge.registerHandler('a', function (data, respond) {"
      "  kept = respond; respond('now'); })");
  receiveAndSettle(R"({"handlerName":"a","callbackId":"objc_cb_1"})");
  EXPECT_EQ(fetch(), R"([{"handlerName":"a","responseId":"objc_cb_1","responseData":"now"}])");
  EXPECT_EQ(run("page.signals.length"), "1");
  run("kept({later: true}); kept()");
  EXPECT_EQ(fetch(),
            R"([{"handlerName":"a","responseId":"objc_cb_1","responseData":{"later":true}},)"
            R"({"handlerName":"a","responseId":"objc_cb_1"}])");
}

TEST_F(PageScript, AMessageWithoutAHandlerIsReported) {
  open();
  receiveAndSettle(R"({"handlerName":"missing","data":1})");
  EXPECT_EQ(json("page.log"),
            R"([["WebViewJavascriptBridge: WARNING: no handler for message from ObjC:",)"
            R"({"handlerName":"missing","data":1}]])");
  receiveAndSettle(R"({"data":1})");
  EXPECT_EQ(run("page.log.length"), "2");
  EXPECT_EQ(fetch(), "[]");
}

TEST_F(PageScript, TheLastHandlerOfANameCounts) {
  open();
  run("var told = [];"
      "WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); });"
      "WebViewJavascriptBridge.registerHandler('a', function () { told.push(2); })");
  receiveAndSettle(R"({"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[2]");
}

TEST_F(PageScript, MessagesAreHandledOnATurnOfTheirOwn) {
  open();
  run("var told = []; WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); })");
  receive(R"({"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[]");
  EXPECT_EQ(json("page.delays"), "[0]");
  engine_.runTimers();
  EXPECT_EQ(json("told"), "[1]");
}

TEST_F(PageScript, MessagesAreHandledAtOnceWhenThePageWantsIt) {
  open();
  run("var told = []; WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); });"
      "WebViewJavascriptBridge.callHandler('waiting', 1);"
      "WebViewJavascriptBridge.disableJavscriptAlertBoxSafetyTimeout()");
  receive(R"({"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[1]");
  EXPECT_EQ(fetch(), R"([{"handlerName":"waiting","data":1}])") << "what waits goes on waiting";
  EXPECT_EQ(run("page.timers.length"), "0");
}

TEST_F(PageScript, MessagesAreHandledAtOnceWhenTheGameWantsIt) {
  open();
  run("var told = []; WebViewJavascriptBridge.registerHandler('a', function () { told.push(1); })");
  receive(R"({"handlerName":"_disableJavascriptAlertBoxSafetyTimeout"})");
  receive(R"({"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[]") << "the wish itself takes its turn";
  engine_.runTimers();
  receive(R"({"handlerName":"a"})");
  EXPECT_EQ(json("told"), "[1,1]");
}

TEST_F(PageScript, AHandlerThatFailsLeavesTheBridgeWhole) {
  open();
  run("WebViewJavascriptBridge.registerHandler('a', function () { throw new Error('mine'); })");
  receiveAndSettle(R"({"handlerName":"a"})");
  EXPECT_EQ(json("page.log"), R"([["WebViewJavascriptBridge: ERROR:mine@https://page/:7"]])");
  run("WebViewJavascriptBridge.callHandler('b', 1)");
  EXPECT_EQ(fetch(), R"([{"handlerName":"b","data":1}])");
}

TEST_F(PageScript, TextThatIsNoJsonFailsInItsTurn) {
  open();
  receiveAndSettle("{");
  EXPECT_EQ(json("page.errors"), R"(["SyntaxError"])");
}

}  // namespace
}  // namespace zovk
