#include "e2e/bridge/BridgePageFixture.h"
#include "e2e/bridge/NavigationListener.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kFetchFailed =
    "WebViewJavascriptBridge: WARNING: Error when trying to fetch data from WKWebView: ";
constexpr const char* kNoQueue =
    "WebViewJavascriptBridge: WARNING: ObjC got nil while fetching the message queue JSON from "
    "webview. This can happen if the WebViewJavascriptBridge JS is not currently present in the "
    "webview, e.g if the webview just loaded a new page.";

class HostilePage : public BridgePageFixture {
 protected:
  /// The game still has its window, and the helper its wits: another page works.
  void expectAllIsWell() {
    letWindowGo();
    openAddress(site().page("/well", bridgePage("bridge.callHandler('tell', 'well');")));
    const std::size_t before = told().size();
    awaitTold(before + 1);
    EXPECT_EQ(told().back(), "well");
  }
};

TEST_F(HostilePage, ThatTakesTheBridgeAwayCausesTwoWarnings) {
  open(bridgePage("bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  evaluate(
      "const bridge = WebViewJavascriptBridge; delete window.WebViewJavascriptBridge;"
      "bridge.callHandler('tell', 'lost'); 1");
  awaitBridgeLines(2);
  EXPECT_THAT(bridgeLines(), ElementsAre(StartsWith(kFetchFailed), kNoQueue));
  expectAllIsWell();
}

TEST_F(HostilePage, ThatSignalsWithoutHavingTheBridgeCausesTwoWarnings) {
  open(page("askForBridge('https://__wvjb_queue_message__');"));
  awaitBridgeLines(2);
  EXPECT_THAT(bridgeLines(), ElementsAre(StartsWith(kFetchFailed), kNoQueue));
  expectAllIsWell();
}

TEST_F(HostilePage, ThatPostsJunkQueuesReachesNoHandler) {
  open(bridgePage("bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  // Each text, or value, is what the next fetch finds.
  evaluate(R"(window.junk = ['', 'not json', '[', '7', '"text"', 'null', '[1, null, "a", []]',
                '{"handlerName": "tell"}', '[{"handlerName": 5}]', '[{"responseId": "objc_cb_1"}]',
                '['.repeat(100000), '[{"callbackId": {}, "handlerName": "nobody"}]',
                '[{"handlerName": "tell", "data": "\ud800"}]', {}, 5, undefined, null, () => 1];
              WebViewJavascriptBridge._fetchQueue = () => junk.shift(); 1)");
  for (int i = 0; i < 18; ++i) evaluate("askForBridge('https://__wvjb_queue_message__'); 1");
  awaitTrue("junk.length === 0");
  evaluate("1");
  for (const std::string& text : told()) EXPECT_NE(text, "nothing");
  EXPECT_TRUE(logged("Invalid number received: 1"));
  EXPECT_TRUE(logged("Invalid string received: handlerName"));
  EXPECT_TRUE(logged("Nobody waits for the response: objc_cb_1"));
  EXPECT_TRUE(logged(kNoQueue));
  expectAllIsWell();
}

TEST_F(HostilePage, WhoseFetchThrowsCausesTwoWarnings) {
  open(bridgePage("bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  evaluate(
      "WebViewJavascriptBridge._fetchQueue = () => { throw new Error('mine'); };"
      "askForBridge('https://__wvjb_queue_message__'); 1");
  awaitBridgeLines(2);
  EXPECT_THAT(bridgeLines(), ElementsAre(HasSubstr("mine"), kNoQueue));
  expectAllIsWell();
}

TEST_F(HostilePage, ThatBreaksJsonCausesWarnings) {
  open(bridgePage("bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  evaluate(
      "JSON.stringify = () => { throw new Error('broken'); }; JSON.parse = () => null;"
      "WebViewJavascriptBridge.callHandler('tell', 'lost'); 1");
  awaitBridgeLines(2);
  EXPECT_THAT(bridgeLines(), ElementsAre(StartsWith(kFetchFailed), kNoQueue));
  bridge().callHandler("anything", boost::json::value("x"));
  EXPECT_EQ(evaluate("1"), 1);
  expectAllIsWell();
}

TEST_F(HostilePage, ThatBreaksTimersHoldsOnlyItselfUp) {
  open(page("window.setTimeout = () => 0; window.WVJBCallbacks = []; askForBridge();"));
  awaitTrue("typeof WebViewJavascriptBridge === 'object'");
  bridge().callHandler("anything", boost::json::value("x"));
  evaluate("WebViewJavascriptBridge.callHandler('tell', 'without timers'); 1");
  awaitTold(1);
  EXPECT_THAT(bridgeLines(), IsEmpty());
  expectAllIsWell();
}

TEST_F(HostilePage, ThatBreaksPrototypesReachesNoOtherHandler) {
  open(bridgePage(
      "Object.prototype.responseId = 'objc_cb_1'; Object.prototype.callbackId = 'mine';"
      "Object.prototype.toJSON = function () { return this.handlerName ? {handlerName: 'tell', "
      "data: 'changed'} : this; };"
      "bridge.callHandler('double', 'a');"));
  awaitTold(1);
  EXPECT_THAT(told(), ElementsAre("changed"));
  expectAllIsWell();
}

TEST_F(HostilePage, ThatAsksForAPasswordGetsNoneAndIsShownAsTheServerWishes) {
  LoopbackServer locked;
  const std::string address =
      locked.handle("/locked", [](const httplib::Request&, httplib::Response& response) {
        response.status = 401;
        response.set_header("WWW-Authenticate", "Basic realm=\"Lanterns\"");
        response.set_content("<!doctype html><title>Locked</title><p>No", "text/html");
      });
  const auto listener = std::make_shared<NavigationListener>();
  windowSettings().navigationDelegate = listener;
  openAddress(address);
  pumpUntil([&] { return listener->events.size() == 3; }, "the end of the load");
  EXPECT_THAT(listener->events, ElementsAre("started", "committed", "finished"));
  EXPECT_EQ(locked.requests().size(), 1U);
  EXPECT_EQ(evaluate("document.body.textContent"), "No");
  expectAllIsWell();
  ZOVKPopupHost::shutDown();  // before the server, which would wait for its connections
}

}  // namespace
}  // namespace zovk
