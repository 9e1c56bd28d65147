#include <memory>
#include <string>
#include <vector>

#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "platform/memory/MemoryWebView.h"
#include "script/ScriptEngine.h"
#include "zovkpopup/Bridge.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A bridge and a page that really runs the script, in a web view whose navigations the test makes.
class BothEnds : public ::testing::Test {
 protected:
  using Bridge = ZOVKPopupWKWebViewJavascriptBridge;
  using Value = std::optional<boost::json::value>;

  BothEnds() {
    ZPLogger::setEnvironment(memoryLogEnvironment(memory_->log, false));
    view_->setScriptHandler([this](const std::string& script) {
      ScriptResult result;
      try {
        result.value = boost::json::value(engine_.run(script));
      } catch (const std::runtime_error& error) {
        result.error = error.what();
      }
      return result;
    });
    engine_.run(
        "var told = []; window.WVJBCallbacks = [function (bridge) {"
        "  window.bridge = bridge;"
        "  bridge.registerHandler('double', function (data, respond) {"
        "    told.push(data); respond(data + data); }); }]");
  }
  ~BothEnds() override {
    memory_->shutDown();  // a script under way holds the bridge, and that the platform
    ZPLogger::setEnvironment({});
  }

  void askForBridge() {
    view_->navigate("https://__bridge_loaded__/", TargetFrame::kSub);
    settle();
  }
  /// Runs scripts, timers and the frame's navigations until nothing is left to do.
  void settle() {
    do {
      memory_->scheduler.runReady();
      engine_.runTimers();
      while (engine_.run("page.signals.length") != "0") {
        EXPECT_TRUE(view_->navigate(engine_.run("page.signals.shift()")).cancelled());
      }
    } while (memory_->scheduler.pendingTaskCount() > 0);
  }
  static std::string textOf(const Value& value) {
    return value ? boost::json::serialize(*value) : "none";
  }
  Bridge::ResponseCallback record() {
    return [this](const Value& data) { told_.push_back(textOf(data)); };
  }

  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
  ScriptEngine engine_;
  std::shared_ptr<MemoryWebView> view_ =
      std::make_shared<MemoryWebView>(memory_->scheduler, WebViewConfiguration());
  std::shared_ptr<Bridge> bridge_ = Bridge::bridgeForWebView(view_, memory_->shared());
  std::vector<std::string> told_;
};

TEST_F(BothEnds, ACallBeforeThePageAskedIsDeliveredAndAnswered) {
  bridge_->callHandler("double", "it's \\ \n\u2028\"", record());
  askForBridge();
  EXPECT_EQ(engine_.run("told[0]"), "it's \\ \n\u2028\"");
  EXPECT_THAT(told_, ElementsAre(boost::json::serialize(
                         boost::json::value("it's \\ \n\u2028\"it's \\ \n\u2028\""))));
  EXPECT_THAT(memory_->log.lines(), IsEmpty());
}

TEST_F(BothEnds, ThePageCallsTheGameAndIsAnswered) {
  bridge_->registerHandler("half", [](const Value& data, const Bridge::ResponseCallback& respond) {
    respond(data->to_number<double>() / 2);
  });
  askForBridge();
  engine_.run(
      "var answers = []; [3, 8].forEach(function (number) {"
      "  bridge.callHandler('half', number, function (data) { answers.push(data); }); })");
  settle();
  EXPECT_EQ(engine_.run("JSON.stringify(answers)"), "[1.5,4]");
}

TEST_F(BothEnds, AnAnswerOfNothingReachesThePageAsNull) {
  bridge_->registerHandler("a", [](const Value&, const Bridge::ResponseCallback& respond) {
    respond(std::nullopt);
    respond("a second answer");
  });
  askForBridge();
  engine_.run(
      "var answers = [];"
      "bridge.callHandler('a', function (data) { answers.push(data); })");
  settle();
  EXPECT_EQ(engine_.run("JSON.stringify(answers)"), "[null]");
}

TEST_F(BothEnds, AnEmptyIdentifierMeansTheSameToBoth) {
  int calls = 0;
  bridge_->registerHandler("a", [&](const Value&, const Bridge::ResponseCallback& respond) {
    ++calls;
    respond("answer");
  });
  askForBridge();
  // The page's own queue, with what its script never writes itself.
  engine_.run(
      "WebViewJavascriptBridge._fetchQueue = function () {"
      "  return JSON.stringify([{handlerName: 'a', callbackId: ''},"
      "                         {handlerName: 'a', responseId: ''}]); }");
  view_->navigate("https://__wvjb_queue_message__/", TargetFrame::kSub);
  settle();
  EXPECT_EQ(calls, 1) << "the second is a response";
  EXPECT_EQ(engine_.run("page.log.length"), "0") << "the answer is a response to the page, too";
  EXPECT_EQ(memory_->log.count("Nobody waits for the response: "), 1U);
}

TEST_F(BothEnds, AMessageWithoutANameIsWarnedOfByThePage) {
  askForBridge();
  bridge_->send(1);
  settle();
  EXPECT_EQ(engine_.run("page.log.length"), "1");
}

TEST_F(BothEnds, WithTheSafetyTimeoutOffThePageAnswersAtOnce) {
  askForBridge();
  bridge_->disableJavscriptAlertBoxSafetyTimeout();
  settle();
  bridge_->callHandler("double", 2, record());
  memory_->scheduler.runReady();  // no timer of the page is run
  EXPECT_EQ(engine_.run("JSON.stringify(told)"), "[2]");
  settle();
  EXPECT_THAT(told_, ElementsAre("4"));
}

TEST_F(BothEnds, AThousandCallsBothWaysAreAllAnswered) {
  bridge_->registerHandler(
      "echo", [](const Value& data, const Bridge::ResponseCallback& respond) { respond(data); });
  askForBridge();
  engine_.run(
      "var sum = 0; for (var i = 0; i < 1000; i++) {"
      "  bridge.callHandler('echo', i, function (data) { sum += data; }); }");
  for (int i = 0; i < 1000; ++i) bridge_->callHandler("double", i, record());
  settle();
  EXPECT_EQ(engine_.run("sum"), "499500");
  ASSERT_EQ(told_.size(), 1000U);
  EXPECT_EQ(told_.back(), "1998");
}

TEST_F(BothEnds, APageWithoutTheBridgeIsReported) {
  view_->navigate("https://__wvjb_queue_message__/");
  settle();
  EXPECT_EQ(memory_->log.count("Error when trying to fetch data from WKWebView: "), 1U);
  EXPECT_EQ(memory_->log.count("ObjC got nil while fetching"), 1U);
}

}  // namespace
}  // namespace zovk
