#include <array>
#include <chrono>
#include <string>

#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using BridgeFlush = BridgeFixture;

std::string invalid(const std::string& kind, const std::string& element) {
  return "WebViewJavascriptBridge: WARNING: Invalid " + kind + " received: " + element;
}

std::string unknownHandler(const std::string& message) {
  return "WVJBNoHandlerException, No handler for message from JS: " + message;
}

std::string unknownResponse(const std::string& id) {
  return "WebViewJavascriptBridge: WARNING: Nobody waits for the response: " + id;
}

TEST_F(BridgeFlush, AMissingOrEmptyQueueIsReportedAndChangesNothing) {
  noteCallsOf("a");
  bridge_->sendData(
      1, [](const Value&) {}, "held");
  bridge_->flushMessageQueue(std::nullopt);
  bridge_->flushMessageQueue("");
  EXPECT_THAT(warnings(), ElementsAre(kNoQueue, kNoQueue));
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(bridge_->responseCallbacks(), ElementsAre("objc_cb_1"));
  EXPECT_EQ(bridge_->startupMessageQueue()->size(), 1U);
}

TEST_F(BridgeFlush, AHandlerIsToldTheDataOfItsMessages) {
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"([{"handlerName":"a"},{"handlerName":"a","data":null},
      {"handlerName":"a","data":[1,"x"]},{"data":{"k":2},"handlerName":"a"}])");
  EXPECT_THAT(told_, ElementsAre("none", "null", R"([1,"x"])", R"({"k":2})"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, MessagesAreHandledInTheirOrder) {
  for (const char* name : {"a", "b"}) {
    bridge_->setHandler(name, [this, name](const Value& data, const Bridge::ResponseCallback&) {
      told_.push_back(name + textOf(data));
    });
  }
  bridge_->flushMessageQueue(R"([{"handlerName":"b","data":1},{"handlerName":"a","data":2},
      {"handlerName":"b","data":3}])");
  EXPECT_THAT(told_, ElementsAre("b1", "a2", "b3"));
}

TEST_F(BridgeFlush, AClosedBridgeLooksAtNothing) {
  bridge_->close();
  bridge_->flushMessageQueue(std::nullopt);
  bridge_->flushMessageQueue(R"([5,{"handlerName":"a"}])");
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, ABridgeThatAHandlerClosesLooksAtNothingMore) {
  bridge_->setHandler("a", [this](const Value&, const Bridge::ResponseCallback&) {
    told_.emplace_back("called");
    bridge_->close();
  });
  bridge_->flushMessageQueue(R"([{"handlerName":"a"},5,{"handlerName":"a"}])");
  EXPECT_THAT(told_, ElementsAre("called"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, AnEmptyArrayIsNoMistake) {
  bridge_->flushMessageQueue("[]");
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, ATextThatDoesNotParseEndsWithNothingDone) {
  noteCallsOf("a");
  for (const std::string& text : {std::string(R"([{"handlerName":"a"})"), std::string("x"),
                                  std::string(R"([{"a":"\ud800"}])"), std::string(100'000, '['),
                                  R"([{"handlerName":"a","data":)" + std::string(600, '[')}) {
    bridge_->flushMessageQueue(text);
  }
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, ATextThatIsNoCollectionHasNothingToWalk) {
  for (const char* text : {"5", "null", "true", R"("handlerName")"}) {
    bridge_->flushMessageQueue(text);
  }
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeFlush, AnObjectIsWalkedByItsKeys) {
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"({"handlerName":"a","data":{"x":1}})");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(warnings(), ElementsAre(invalid("string", "handlerName"), invalid("string", "data")));
}

TEST_F(BridgeFlush, ElementsThatAreNoMessagesAreReportedWithTheirKind) {
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"([5,-1,1.5,"te\"xt",true,null,[1,{"b":"c"}],{"handlerName":"a"}])");
  EXPECT_THAT(warnings(),
              ElementsAre(invalid("number", "5"), invalid("number", "-1"), invalid("number", "1.5"),
                          invalid("string", "te\"xt"), invalid("boolean", "true"),
                          invalid("null", "null"), invalid("array", R"([1,{"b":"c"}])")));
  EXPECT_THAT(told_, ElementsAre("none")) << "the message behind them is handled";
}

TEST_F(BridgeFlush, ANumberAndAnUnknownHandlerGiveOneLineEach) {
  bridge_->flushMessageQueue(R"([1,{"handlerName":"missing","callbackId":"cb_1_2"}])");
  EXPECT_THAT(warnings(),
              ElementsAre(invalid("number", "1"),
                          unknownHandler(R"({"handlerName":"missing","callbackId":"cb_1_2"})")));
}

TEST_F(BridgeFlush, AnUnknownHandlerIsNotAnswered) {
  open();
  bridge_->flushMessageQueue(R"([{"handlerName":"missing","callbackId":"cb_1_2"}])");
  EXPECT_THAT(scripts(), IsEmpty());
}

TEST_F(BridgeFlush, AHandlerThatWasRemovedIsUnknown) {
  noteCallsOf("a");
  bridge_->removeHandler("a");
  bridge_->removeHandler("a");
  bridge_->flushMessageQueue(R"([{"handlerName":"a"}])");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(warnings(), ElementsAre(unknownHandler(R"({"handlerName":"a"})")));
}

TEST_F(BridgeFlush, AnEmptyHandlerIsUnknown) {
  bridge_->setHandler("a", nullptr);
  bridge_->flushMessageQueue(R"([{"handlerName":"a"}])");
  EXPECT_THAT(warnings(), ElementsAre(unknownHandler(R"({"handlerName":"a"})")));
}

TEST_F(BridgeFlush, TheLastHandlerOfANameCounts) {
  bridge_->setHandler("a", [](const Value&, const Bridge::ResponseCallback&) { FAIL(); });
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"([{"handlerName":"a"}])");
  EXPECT_THAT(told_, ElementsAre("none"));
}

/// JSON values that are not texts.
constexpr std::array<const char*, 5> kNoTexts = {"1", "null", "{}", R"(["objc_cb_1"])", "true"};

TEST_F(BridgeFlush, AHandlersNameThatIsNoTextCountsAsAbsent) {
  noteCallsOf("");
  std::vector<std::string> expected;
  for (const std::string odd : kNoTexts) {
    bridge_->flushMessageQueue(R"([{"handlerName":)" + odd + "}]");
    expected.push_back(unknownHandler(R"({"handlerName":)" + odd + "}"));
  }
  EXPECT_EQ(warnings(), expected);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(BridgeFlush, AMessageWithAResponseIdIsAResponseWhateverThatIs) {
  open();
  noteCallsOf("a");
  bridge_->sendData(1, record(told_), "x");
  scripts().clear();
  std::vector<std::string> expected;
  for (const std::string odd : kNoTexts) {
    const std::string request = R"("handlerName":"a","callbackId":"cb")";
    bridge_->flushMessageQueue("[{" + request + R"(,"responseId":)" + odd + "}]");
    expected.push_back(unknownResponse(odd));
  }
  EXPECT_EQ(warnings(), expected);
  EXPECT_THAT(told_, IsEmpty()) << "neither handler nor callback";
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_THAT(bridge_->responseCallbacks(), ElementsAre("objc_cb_1"));
}

TEST_F(BridgeFlush, ARequestIsAnsweredUnderItsCallbackIdWhateverThatIs) {
  open();
  bridge_->setHandler("a",
                      [](const Value&, const Bridge::ResponseCallback& respond) { respond(7); });
  std::vector<std::string> expected;
  for (const std::string odd : {R"("")", "1", "null", "{}", "[1]", "true"}) {
    bridge_->flushMessageQueue(R"([{"handlerName":"a","callbackId":)" + odd + "}]");
    expected.push_back(commandFor(R"({"responseId":)" + odd + R"(,"responseData":7})"));
  }
  EXPECT_EQ(scripts(), expected);
}

TEST_F(BridgeFlush, AResponseReachesItsCallbackOnce) {
  open();
  bridge_->sendData(1, record(told_), "x");
  bridge_->sendData(
      2, [](const Value&) { FAIL(); }, "y");
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1","responseData":{"a":1}}])");
  EXPECT_THAT(told_, ElementsAre(R"({"a":1})"));
  EXPECT_THAT(bridge_->responseCallbacks(), ElementsAre("objc_cb_2"));
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1","responseData":2}])");
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), ElementsAre(unknownResponse("objc_cb_1")));
}

TEST_F(BridgeFlush, AResponseWithoutDataIsNoneAndNullIsNull) {
  open();
  for (int i = 0; i < 2; ++i) bridge_->sendData(1, record(told_), "x");
  bridge_->flushMessageQueue(
      R"([{"responseId":"objc_cb_1"},{"responseId":"objc_cb_2","responseData":null}])");
  EXPECT_THAT(told_, ElementsAre("none", "null"));
}

TEST_F(BridgeFlush, NothingElseInAResponseIsLookedAt) {
  open();
  bridge_->setHandler("a", [](const Value&, const Bridge::ResponseCallback&) { FAIL(); });
  bridge_->sendData(1, record(told_), "x");
  bridge_->flushMessageQueue(R"([{"handlerName":"a","callbackId":"cb_1_1","data":3,
      "responseId":"objc_cb_1","responseData":4}])");
  EXPECT_THAT(told_, ElementsAre("4"));
}

TEST_F(BridgeFlush, AResponseThatNobodyWaitsForIsReportedAndIgnored) {
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_7","handlerName":"a"},{"responseId":""},
      {"handlerName":"a","data":"next"}])");
  EXPECT_THAT(warnings(), ElementsAre(unknownResponse("objc_cb_7"), unknownResponse("")));
  EXPECT_THAT(told_, ElementsAre("\"next\"")) << "and the rest is handled";
}

TEST_F(BridgeFlush, AResponseAfterAResetIsIgnored) {
  open();
  bridge_->sendData(1, record(told_), "x");
  bridge_->reset();
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1","responseData":1}])");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(warnings(), ElementsAre(unknownResponse("objc_cb_1")));
}

TEST_F(BridgeFlush, ACallbackIsStillKeptWhileItRuns) {
  open();
  std::vector<std::string> during;
  bridge_->sendData(
      1, [&](const Value&) { during = bridge_->responseCallbacks(); }, "x");
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1"}])");
  EXPECT_THAT(during, ElementsAre("objc_cb_1"));
  EXPECT_THAT(bridge_->responseCallbacks(), IsEmpty());
}

TEST_F(BridgeFlush, ACallbackThatResetsAndSendsAnewDoesNotTakeTheNewCallbackAlong) {
  open();
  bridge_->sendData(
      1,
      [this](const Value&) {
        bridge_->reset();
        bridge_->sendData(2, record(told_), "y");
      },
      "x");
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1"}])");
  EXPECT_THAT(bridge_->responseCallbacks(), ElementsAre("objc_cb_1"));
  bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1","responseData":"new"}])");
  EXPECT_THAT(told_, ElementsAre("\"new\""));
}

TEST_F(BridgeFlush, AMessageWithANumberWithoutEndIsStillReported) {
  bridge_->flushMessageQueue(R"([{"handlerName":"missing","data":1e999}])");
  EXPECT_EQ(warnings().size(), 1U);
}

TEST_F(BridgeFlush, ALongMistakeIsShownInPart) {
  const std::string letters(20'000, 'x');
  bridge_->flushMessageQueue("[\"" + letters + "\"]");
  bridge_->flushMessageQueue(R"([{"handlerName":")" + letters + R"("}])");
  const std::string shown = R"({"handlerName":")" + letters;
  EXPECT_THAT(warnings(), ElementsAre(invalid("string", letters.substr(0, 16 * 1024) + " [...]"),
                                      unknownHandler(shown.substr(0, 16 * 1024) + " [...]")));
}

TEST_F(BridgeFlush, TwentyMistakesASecondAreReportedAndTheOthersCounted) {
  std::string queue = "[0";
  for (int i = 1; i < 30; ++i) queue += "," + std::to_string(i);
  bridge_->flushMessageQueue(queue + R"(,{"handlerName":"missing"},{"responseId":"cb"}])");
  EXPECT_EQ(warnings().size(), 20U);
  EXPECT_EQ(warnings().back(), invalid("number", "19"));
  memory_->scheduler.advance(std::chrono::seconds(1));
  bridge_->flushMessageQueue("[true]");
  EXPECT_EQ(warnings().size(), 21U);
  EXPECT_EQ(warnings().back(), invalid("boolean", "true") + " (12 more such lines held back)");
}

TEST_F(BridgeFlush, MistakesThatWereHeldBackAreCountedBeforeAReset) {
  std::string queue = "[0";
  for (int i = 1; i < 22; ++i) queue += "," + std::to_string(i);
  bridge_->flushMessageQueue(queue + "]");
  bridge_->reset();
  EXPECT_EQ(warnings().size(), 21U);
  EXPECT_EQ(warnings().back(), invalid("number", "21") + " (1 more such lines held back)");
  bridge_->flushMessageQueue(queue + "]");
  bridge_->close();
  EXPECT_EQ(warnings().back(), invalid("number", "21") + " (2 more such lines held back)");
}

}  // namespace
}  // namespace zovk
