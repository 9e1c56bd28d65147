#include <limits>

#include "text/JsonText.h"
#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BridgeLog : public BridgeFixture {
 protected:
  ~BridgeLog() override { Bridge::setLogMaxLength(500); }
  std::vector<std::string> lines() const { return memory_->log.lines(); }
  const std::string thirty_ = "abcdefghijklmnopqrstuvwxyz0123";
};

// Logging cannot be switched off again, so this one needs a process of its own.
TEST_F(BridgeLog, IsOffAtFirst) {
  open();
  bridge_->sendData(1, nullptr, "a");
  bridge_->flushMessageQueue("[{}]");
  bridge_->_log("SEND", thirty_);
  EXPECT_THAT(lines(), ElementsAre("WVJBNoHandlerException, No handler for message from JS: {}"));
}

TEST_F(BridgeLog, TellsOfSentMessagesCompactly) {
  Bridge::enableLogging();
  open();
  bridge_->sendData("it's", nullptr, "a");
  EXPECT_THAT(lines(), ElementsAre(R"(WVJB SEND: {"data":"it's","handlerName":"a"})"));
}

TEST_F(BridgeLog, TellsOfHeldMessagesWhenTheyLeave) {
  Bridge::enableLogging();
  bridge_->sendData(1, nullptr, "a");
  EXPECT_THAT(lines(), IsEmpty());
  bridge_->setupMessageQueue();
  EXPECT_THAT(lines(), ElementsAre(R"(WVJB SEND: {"data":1,"handlerName":"a"})"));
}

TEST_F(BridgeLog, TellsOfReceivedMessagesInLines) {
  Bridge::enableLogging();
  noteCallsOf("a");
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":[1]}])");
  EXPECT_THAT(lines(), ElementsAre("WVJB RCVD: {\n"
                                   "  \"handlerName\" : \"a\",\n"
                                   "  \"data\" : [\n"
                                   "    1\n"
                                   "  ]\n"
                                   "}"));
}

TEST_F(BridgeLog, TellsOfAMessageBeforeItIsHandedOver) {
  Bridge::enableLogging();
  open();
  std::vector<std::string> linesThen;
  page_->whenRun = [&](const std::string&) { linesThen = lines(); };
  bridge_->sendData(1, nullptr, "a");
  EXPECT_THAT(linesThen, ElementsAre(R"(WVJB SEND: {"data":1,"handlerName":"a"})"));
}

TEST_F(BridgeLog, TellsOfAMessageBeforeItsHandlerOrCallbackRuns) {
  Bridge::enableLogging();
  std::vector<std::size_t> linesThen;
  bridge_->setHandler("a", [&](const Value&, const Bridge::ResponseCallback&) {
    linesThen.push_back(lines().size());
  });
  bridge_->sendData(
      1, [&](const Value&) { linesThen.push_back(lines().size()); }, "b");
  bridge_->flushMessageQueue(R"([{"handlerName":"a"},{"responseId":"objc_cb_1"}])");
  EXPECT_THAT(linesThen, ElementsAre(1U, 2U));
}

TEST_F(BridgeLog, ALongTextIsCut) {
  Bridge::enableLogging();
  Bridge::setLogMaxLength(10);
  bridge_->_log("SEND", thirty_);
  bridge_->_log("RCVD", boost::json::value(thirty_));
  EXPECT_THAT(lines(), ElementsAre("WVJB SEND: abcdefghij [...]", "WVJB RCVD: abcdefghij [...]"));
}

TEST_F(BridgeLog, ATextOfTheGreatestLengthIsWhole) {
  Bridge::enableLogging();
  Bridge::setLogMaxLength(30);
  bridge_->_log("SEND", thirty_);
  Bridge::setLogMaxLength(29);
  bridge_->_log("SEND", thirty_);
  EXPECT_THAT(lines(), ElementsAre("WVJB SEND: " + thirty_,
                                   "WVJB SEND: " + thirty_.substr(0, 29) + " [...]"));
}

TEST_F(BridgeLog, TheLengthIs500AtFirst) {
  Bridge::enableLogging();
  bridge_->_log("SEND", std::string(500, 'x'));
  bridge_->_log("SEND", std::string(501, 'x'));
  EXPECT_THAT(lines(), ElementsAre("WVJB SEND: " + std::string(500, 'x'),
                                   "WVJB SEND: " + std::string(500, 'x') + " [...]"));
}

TEST_F(BridgeLog, LengthCountsCharactersAndCutsNone) {
  Bridge::enableLogging();
  Bridge::setLogMaxLength(3);
  bridge_->_log("SEND", std::string("a\u00e9\u4e2d"));
  bridge_->_log("SEND", std::string("\u00e9\u4e2d\U0001f600x"));
  EXPECT_THAT(lines(),
              ElementsAre("WVJB SEND: a\u00e9\u4e2d", "WVJB SEND: \u00e9\u4e2d\U0001f600 [...]"));
}

TEST_F(BridgeLog, ALengthOfNothingLeavesTheMarkAndALengthBelowCutsNothing) {
  Bridge::enableLogging();
  Bridge::setLogMaxLength(0);
  bridge_->_log("SEND", thirty_);
  bridge_->_log("SEND", std::string());
  Bridge::setLogMaxLength(-1);
  bridge_->_log("SEND", thirty_);
  EXPECT_THAT(lines(), ElementsAre("WVJB SEND:  [...]", "WVJB SEND: ", "WVJB SEND: " + thirty_));
}

TEST_F(BridgeLog, WhatJsonCannotHoldIsShownAsNothing) {
  Bridge::enableLogging();
  bridge_->_log("RCVD", boost::json::value(std::numeric_limits<double>::infinity()));
  EXPECT_THAT(lines(), ElementsAre("WVJB RCVD: (null)"));
}

TEST_F(BridgeLog, EndsOfCharactersAreFound) {
  EXPECT_EQ(endOfCharacters("", 0), 0U);
  EXPECT_EQ(endOfCharacters("", 5), 0U);
  EXPECT_EQ(endOfCharacters("ab", 0), 0U);
  EXPECT_EQ(endOfCharacters("ab", 2), 2U);
  EXPECT_EQ(endOfCharacters("\u00e9\u00e9", 1), 2U);
  EXPECT_EQ(endOfCharacters("\x80\x80", 1), 2U) << "bytes that start no character";
}

}  // namespace
}  // namespace zovk
