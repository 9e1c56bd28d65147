#include "unit/bridge/WebViewBridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using WebViewBridge = WebViewBridgeFixture;

const std::string kFetch = "WebViewJavascriptBridge._fetchQueue();";

TEST_F(WebViewBridge, NeedsAWebViewAndAPlatform) {
  EXPECT_EQ(Adapter::bridgeForWebView(nullptr, memory_->shared()), nullptr);
  EXPECT_EQ(Adapter::bridgeForWebView(view_, nullptr), nullptr);
}

TEST_F(WebViewBridge, TellsTheWebViewWhatItFetchesOnWhichSignal) {
  EXPECT_EQ(view_->fetchedAhead(), std::make_pair(std::string(kQueueSignal), kFetch));
  adapter_.reset();
  EXPECT_EQ(view_->fetchedAhead(), std::make_pair(std::string(), std::string()));
}

TEST_F(WebViewBridge, InjectsTheScriptWhenThePageAsksAndCancelsThatNavigation) {
  for (const char* url : {kAskForBridge, "wvjbscheme://__BRIDGE_LOADED__"}) {
    EXPECT_TRUE(view_->navigate(url, TargetFrame::kSub).cancelled());
  }
  EXPECT_THAT(view_->scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                            ZOVKPopupWebViewJavascriptBridge_js()));
}

TEST_F(WebViewBridge, HoldsCallsUntilThePageHasAsked) {
  adapter_->callHandler("a", 1);
  EXPECT_THAT(view_->scripts(), IsEmpty());
  askForBridge();
  adapter_->callHandler("b");
  EXPECT_THAT(view_->scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                            commandFor(R"({"data":1,"handlerName":"a"})"),
                                            commandFor(R"({"handlerName":"b"})")));
}

TEST_F(WebViewBridge, SendsWithAndWithoutANameAndACallback) {
  adapter_->setupMessageQueue();
  adapter_->send("data");
  adapter_->send(std::nullopt, record(told_));
  adapter_->callHandler("a", nullptr, record(told_));
  adapter_->disableJavscriptAlertBoxSafetyTimeout();
  EXPECT_THAT(
      view_->scripts(),
      ElementsAre(commandFor(R"({"data":"data"})"), commandFor(R"({"callbackId":"objc_cb_1"})"),
                  commandFor(R"({"data":null,"callbackId":"objc_cb_2","handlerName":"a"})"),
                  commandFor(R"({"handlerName":"_disableJavascriptAlertBoxSafetyTimeout"})")));
}

TEST_F(WebViewBridge, FetchesTheQueueOnItsSignalAndCancelsThatNavigation) {
  EXPECT_TRUE(view_->navigate(kQueueSignal, TargetFrame::kSub).cancelled());
  EXPECT_THAT(view_->scripts(), ElementsAre(kFetch));
}

TEST_F(WebViewBridge, InjectsAndFetchesBeforeItCancels) {
  for (const char* url : {kAskForBridge, kQueueSignal}) {
    const std::size_t before = view_->scripts().size();
    std::size_t scriptsThen = 0;
    adapter_->decidePolicyForNavigationAction(
        *view_, {url, TargetFrame::kSub},
        [&](NavigationPolicy) { scriptsThen = view_->scripts().size(); });
    EXPECT_EQ(scriptsThen, before + 1) << url;
  }
}

TEST_F(WebViewBridge, HandlesAllMessagesOfOneQueueInOrder) {
  adapter_->registerHandler("a", [this](const Value& data, const ResponseCallback& respond) {
    told_.push_back(textOf(data));
    respond(data);
  });
  askForBridge();
  signal(R"([{"handlerName":"a","data":1},{"handlerName":"a","data":2,"callbackId":"cb_1_5"}])");
  EXPECT_THAT(told_, ElementsAre("1", "2"));
  EXPECT_EQ(view_->scripts().back(), commandFor(R"({"responseId":"cb_1_5","responseData":2})"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(WebViewBridge, RunsTheCallbackWhenThePageResponds) {
  adapter_->callHandler("a", 1, record(told_));
  askForBridge();
  signal(R"([{"responseId":"objc_cb_1","responseData":"done"}])");
  EXPECT_THAT(told_, ElementsAre("\"done\""));
}

TEST_F(WebViewBridge, ForgetsARemovedHandler) {
  adapter_->registerHandler("a", [](const Value&, const ResponseCallback&) { FAIL(); });
  adapter_->removeHandler("a");
  signal(R"([{"handlerName":"a"}])");
  EXPECT_THAT(warnings(), ElementsAre(R"(WVJBNoHandlerException, No handler for message from JS: )"
                                      R"({"handlerName":"a"})"));
}

TEST_F(WebViewBridge, ReportsAFetchThatFailsAndThenTheMissingQueue) {
  signal(std::nullopt);
  EXPECT_THAT(warnings(), ElementsAre("WebViewJavascriptBridge: WARNING: Error when trying to "
                                      "fetch data from WKWebView: no such variable",
                                      kNoQueue));
}

TEST_F(WebViewBridge, TakesAQueueThatIsNoTextForAMissingOne) {
  signal(nullptr);
  signal(boost::json::parse(R"([{"handlerName":"a"}])"));
  signal(5);
  EXPECT_THAT(warnings(), ElementsAre(kNoQueue, kNoQueue, kNoQueue));
}

TEST_F(WebViewBridge, HoldsCallsAgainAfterAReset) {
  askForBridge();
  adapter_->reset();
  adapter_->callHandler("a");
  EXPECT_EQ(view_->scripts().size(), 1U);
  askForBridge();
  EXPECT_EQ(view_->scripts().back(), commandFor(R"({"handlerName":"a"})"));
}

TEST_F(WebViewBridge, StaysAliveUntilAFetchIsAnswered) {
  const std::weak_ptr<Adapter> weak = adapter_;
  adapter_->registerHandler(
      "a", [this](const Value&, const ResponseCallback&) { told_.emplace_back("called"); });
  adapter_->WKFlushMessageQueue();
  adapter_.reset();
  EXPECT_FALSE(weak.expired());
  view_->setScriptHandler([](const std::string&) {
    ScriptResult result;
    result.value = R"([{"handlerName":"a"}])";
    return result;
  });
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, ElementsAre("called"));
  EXPECT_TRUE(weak.expired());
}

TEST_F(WebViewBridge, MayBeLetGoByItsOwnHandler) {
  const std::weak_ptr<Adapter> weak = adapter_;
  adapter_->registerHandler("a", [this](const Value&, const ResponseCallback& respond) {
    adapter_.reset();
    view_.reset();
    respond(1);
  });
  signal(R"([{"handlerName":"a","callbackId":"cb_1_1"}])");
  EXPECT_TRUE(weak.expired());
}

TEST_F(WebViewBridge, DoesNothingOnceTheWebViewIsGone) {
  adapter_->setupMessageQueue();
  view_.reset();
  adapter_->callHandler("a");
  adapter_->WKFlushMessageQueue();
  EXPECT_EQ(adapter_->_evaluateJavascript("1"), "");
  memory_->scheduler.runReady();
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(WebViewBridge, ReportsAFetchFromAWebViewThatGoesMeanwhile) {
  adapter_->WKFlushMessageQueue();
  view_.reset();
  memory_->scheduler.runReady();
  EXPECT_EQ(warnings().size(), 2U);
  EXPECT_EQ(warnings().back(), kNoQueue);
}

TEST_F(WebViewBridge, ReportsNoFetchOnceItIsClosed) {
  adapter_->WKFlushMessageQueue();
  adapter_->close();
  view_.reset();
  memory_->scheduler.runReady();
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(WebViewBridge, DoesNotKeepTheWebViewAlive) {
  EXPECT_EQ(view_.use_count(), 1);
  askForBridge();
  memory_->scheduler.runReady();
  EXPECT_EQ(view_.use_count(), 1);
  EXPECT_EQ(adapter_.use_count(), 1);
}

TEST_F(WebViewBridge, ARespondersLifeOutlastsBridgeAndWebView) {
  ResponseCallback kept;
  adapter_->registerHandler("a",
                            [&](const Value&, const ResponseCallback& respond) { kept = respond; });
  askForBridge();
  signal(R"([{"handlerName":"a","callbackId":"cb_1_1"}])");
  adapter_.reset();
  view_.reset();
  kept(1);
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(WebViewBridge, ItsEndFreesCallbacksThatHoldAResponder) {
  const auto life = std::make_shared<int>(0);
  adapter_->registerHandler("a", [this, life](const Value&, const ResponseCallback& respond) {
    adapter_->callHandler("b", 1, [respond, life](const Value& data) { respond(data); });
  });
  askForBridge();
  signal(R"([{"handlerName":"a","callbackId":"cb_1_1"}])");
  EXPECT_EQ(life.use_count(), 3);
  adapter_.reset();
  EXPECT_EQ(life.use_count(), 1);
}

TEST_F(WebViewBridge, RunsScriptsAndReturnsNoText) {
  EXPECT_EQ(adapter_->_evaluateJavascript("1 + 1"), "");
  EXPECT_THAT(view_->scripts(), ElementsAre("1 + 1"));
}

}  // namespace
}  // namespace zovk
