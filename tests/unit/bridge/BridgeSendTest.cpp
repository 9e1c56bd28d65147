#include <limits>

#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using BridgeSend = BridgeFixture;

const auto kNothing = [](const std::optional<boost::json::value>&) {};

TEST_F(BridgeSend, AMessageCarriesWhatIsGivenAndNothingElse) {
  open();
  bridge_->sendData(std::nullopt, nullptr, std::nullopt);
  bridge_->sendData(5, nullptr, std::nullopt);
  bridge_->sendData(std::nullopt, kNothing, std::nullopt);
  bridge_->sendData(std::nullopt, nullptr, "name");
  bridge_->sendData("text", kNothing, "name");
  EXPECT_THAT(scripts(), ElementsAre(commandFor("{}"), commandFor(R"({"data":5})"),
                                     commandFor(R"({"callbackId":"objc_cb_1"})"),
                                     commandFor(R"({"handlerName":"name"})"),
                                     commandFor(R"({"data":"text","callbackId":"objc_cb_2",)"
                                                R"("handlerName":"name"})")));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeSend, NullIsDataAndAnEmptyNameIsAName) {
  open();
  bridge_->sendData(boost::json::value(nullptr), nullptr, "");
  EXPECT_THAT(scripts(), ElementsAre(commandFor(R"({"data":null,"handlerName":""})")));
}

TEST_F(BridgeSend, DataMayBeOfEveryKind) {
  open();
  for (const char* json : {"true", "-7", "18446744073709551615", "0.5", R"("")", "[]", "{}",
                           R"({"a":[1,{"b":null}]})"}) {
    scripts().clear();
    bridge_->sendData(boost::json::parse(json), nullptr, std::nullopt);
    EXPECT_THAT(scripts(), ElementsAre(commandFor(std::string(R"({"data":)") + json + "}")));
  }
}

TEST_F(BridgeSend, CallbackIdentifiersCountOnlyMessagesWithACallback) {
  EXPECT_EQ(bridge_->uniqueId(), 0);
  bridge_->sendData(1, kNothing, "a");
  bridge_->sendData(2, nullptr, "b");
  bridge_->sendData(3, kNothing, "c");
  EXPECT_EQ(bridge_->uniqueId(), 2);
  EXPECT_THAT(bridge_->responseCallbacks(), ElementsAre("objc_cb_1", "objc_cb_2"));
}

TEST_F(BridgeSend, AMessageBeforeTheInjectionIsHeldAndComesRightAfterTheScript) {
  bridge_->sendData(1, nullptr, "a");
  bridge_->sendData(2, nullptr, "b");
  EXPECT_THAT(scripts(), IsEmpty());
  ASSERT_TRUE(bridge_->startupMessageQueue());
  EXPECT_THAT(*bridge_->startupMessageQueue(),
              ElementsAre(boost::json::parse(R"({"data":1,"handlerName":"a"})").as_object(),
                          boost::json::parse(R"({"data":2,"handlerName":"b"})").as_object()));
  bridge_->injectJavascriptFile();
  bridge_->sendData(3, nullptr, "c");
  EXPECT_FALSE(bridge_->startupMessageQueue());
  EXPECT_THAT(scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                     commandFor(R"({"data":1,"handlerName":"a"})"),
                                     commandFor(R"({"data":2,"handlerName":"b"})"),
                                     commandFor(R"({"data":3,"handlerName":"c"})")));
}

TEST_F(BridgeSend, HeldMessagesLeaveWithoutTheScriptToo) {
  bridge_->sendData(1, nullptr, "a");
  bridge_->setupMessageQueue();
  bridge_->setupMessageQueue();
  EXPECT_THAT(scripts(), ElementsAre(commandFor(R"({"data":1,"handlerName":"a"})")));
  EXPECT_FALSE(bridge_->startupMessageQueue());
}

TEST_F(BridgeSend, ASecondInjectionSendsNothingAgain) {
  bridge_->sendData(1, nullptr, "a");
  bridge_->injectJavascriptFile();
  scripts().clear();
  bridge_->injectJavascriptFile();
  EXPECT_THAT(scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js()));
}

TEST_F(BridgeSend, WhatIsSentWhileHeldMessagesLeaveIsNotLost) {
  bridge_->sendData(1, nullptr, "a");
  page_->whenRun = [this](const std::string&) {
    page_->whenRun = nullptr;
    bridge_->sendData(2, nullptr, "b");
  };
  bridge_->injectJavascriptFile();
  // The script was the first to run, so "b" was still held then.
  EXPECT_THAT(scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                     commandFor(R"({"data":1,"handlerName":"a"})"),
                                     commandFor(R"({"data":2,"handlerName":"b"})")));
}

TEST_F(BridgeSend, AResetHoldsMessagesAgainAndCountsAnew) {
  open();
  noteCallsOf("kept");
  bridge_->sendData(1, kNothing, "a");
  bridge_->reset();
  EXPECT_EQ(bridge_->uniqueId(), 0);
  EXPECT_THAT(bridge_->responseCallbacks(), IsEmpty());
  EXPECT_THAT(bridge_->messageHandlers(), ElementsAre("kept"));
  scripts().clear();
  bridge_->sendData(2, kNothing, "b");
  EXPECT_THAT(scripts(), IsEmpty());
  bridge_->injectJavascriptFile();
  EXPECT_THAT(scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                     commandFor(R"({"data":2,"callbackId":"objc_cb_1",)"
                                                R"("handlerName":"b"})")));
}

TEST_F(BridgeSend, AResetDropsWhatWasHeld) {
  bridge_->sendData(1, nullptr, "a");
  bridge_->reset();
  bridge_->setupMessageQueue();
  EXPECT_THAT(scripts(), IsEmpty());
}

TEST_F(BridgeSend, AResetLetsCallbacksGoThatUseTheBridgeAsTheyGo) {
  auto guard = std::shared_ptr<void>(
      nullptr, [this](void*) { bridge_->sendData(9, nullptr, "last words"); });
  bridge_->sendData(
      1, [kept = guard](const Value&) {}, "a");
  guard.reset();
  bridge_->reset();
  ASSERT_TRUE(bridge_->startupMessageQueue());
  EXPECT_EQ(bridge_->startupMessageQueue()->size(), 1U);
}

TEST_F(BridgeSend, AClosedBridgeHoldsNothingAndSendsNowhere) {
  const auto life = std::make_shared<int>(0);
  bridge_->sendData(
      1, [life](const Value&) {}, "a");
  bridge_->setHandler("b", [life](const Value&, const Bridge::ResponseCallback&) {});
  bridge_->close();
  EXPECT_EQ(life.use_count(), 1);
  EXPECT_THAT(bridge_->messageHandlers(), IsEmpty());
  bridge_->sendData(2, nullptr, "c");
  EXPECT_FALSE(bridge_->startupMessageQueue());
  bridge_->reset();
  bridge_->sendData(3, nullptr, "d");
  EXPECT_FALSE(bridge_->startupMessageQueue()) << "a reset opens it no more";
  EXPECT_THAT(scripts(), IsEmpty());
}

TEST_F(BridgeSend, TheSafetyTimeoutIsTurnedOffByAMessage) {
  open();
  bridge_->disableJavscriptAlertBoxSafetyTimeout();
  EXPECT_THAT(
      scripts(),
      ElementsAre(commandFor(R"({"handlerName":"_disableJavascriptAlertBoxSafetyTimeout"})")));
}

TEST_F(BridgeSend, WithoutADelegateNothingHappens) {
  open();
  page_.reset();
  bridge_->sendData(1, nullptr, "a");
  bridge_->injectJavascriptFile();
  bridge_->_evaluateJavascript("1");
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeSend, AScriptGoesToTheDelegateAsItStands) {
  bridge_->_evaluateJavascript("alert('%@')");
  EXPECT_THAT(scripts(), ElementsAre("alert('%@')"));
}

TEST_F(BridgeSend, AMessageThatJsonCannotHoldIsReportedAndNotSent) {
  open();
  bridge_->sendData(std::numeric_limits<double>::quiet_NaN(), nullptr, "a");
  bridge_->sendData(std::numeric_limits<double>::infinity(), nullptr, "a");
  bridge_->sendData("\xff", nullptr, "a");
  bridge_->sendData(1, nullptr, "b");
  EXPECT_THAT(scripts(), ElementsAre(commandFor(R"({"data":1,"handlerName":"b"})")));
  const std::string line =
      "WebViewJavascriptBridge: WARNING: A message is not sent, JSON cannot hold it";
  EXPECT_THAT(warnings(), ElementsAre(line, line, line));
}

TEST_F(BridgeSend, TheTwoCommandsReadAsThePageExpects) {
  EXPECT_EQ(bridge_->webViewJavascriptCheckCommand(),
            "typeof WebViewJavascriptBridge == 'object';");
  EXPECT_EQ(bridge_->webViewJavascriptFetchQueyCommand(), "WebViewJavascriptBridge._fetchQueue();");
}

TEST_F(BridgeSend, NothingGoesOutAfterTheMainQueueIsShutDown) {
  open();
  bridge_->reset();
  bridge_->sendData(1, nullptr, "held");
  memory_->shutDown();
  bridge_->injectJavascriptFile();
  bridge_->setupMessageQueue();
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_EQ(bridge_->startupMessageQueue()->size(), 1U);
}

}  // namespace
}  // namespace zovk
