#include <chrono>
#include <string>

#include "bridge/ReceivedQueue.h"
#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// More than is read in one turn.
std::string longText() {
  return std::string(std::size_t{100} * 1024, 'x');
}

class BridgeLongQueue : public BridgeFixture {
 protected:
  BridgeLongQueue() { noteCallsOf("a"); }
  void pumpOnce() { memory_->scheduler.runReady(std::chrono::microseconds(0)); }
  int pumpsUntil(std::size_t calls) {
    int pumps = 0;
    for (; told_.size() < calls && pumps < 100'000; ++pumps) pumpOnce();
    return pumps;
  }
};

TEST_F(BridgeLongQueue, IsReadInTurnsOfTheMainQueue) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":")" + longText() + R"("}])");
  EXPECT_THAT(told_, IsEmpty());
  // 100 KiB are four pieces.
  EXPECT_EQ(pumpsUntil(1), 4);
  EXPECT_THAT(told_, ElementsAre("\"" + longText() + "\""));
}

TEST_F(BridgeLongQueue, IsReadAtOnceUpTo32Kibibytes) {
  const std::string start = R"([{"handlerName":"a","data":")";
  const std::string end = R"("}])";
  const std::size_t room = std::size_t{32} * 1024 - start.size() - end.size();
  bridge_->flushMessageQueue(start + std::string(room, 'x') + end);
  EXPECT_EQ(told_.size(), 1U);
  bridge_->flushMessageQueue(start + std::string(room + 1, 'x') + end);
  EXPECT_EQ(told_.size(), 1U);
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 2U);
}

TEST_F(BridgeLongQueue, HandlesSixteenMessagesInATurn) {
  std::string queue = "[";
  for (int i = 0; i < 50'000; ++i) queue += R"({"handlerName":"a"},)";
  bridge_->flushMessageQueue(queue + R"({"handlerName":"a"}])");
  pumpsUntil(1);
  EXPECT_EQ(told_.size(), 16U);
  pumpOnce();
  EXPECT_EQ(told_.size(), 32U);
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 50'001U);
}

TEST_F(BridgeLongQueue, HoldsUpTheQueuesBehindItAndTheirOrderStays) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":1},")" + longText() + R"("])");
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":2}])");
  EXPECT_THAT(told_, IsEmpty());
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, ElementsAre("1", "2"));
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":3}])");
  EXPECT_THAT(told_, ElementsAre("1", "2", "3")) << "nothing is in the way any more";
}

TEST_F(BridgeLongQueue, ThatDoesNotParseLeavesNothingDone) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a"},")" + longText() + R"(",])");
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":2}])");
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, ElementsAre("2"));
  EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(BridgeLongQueue, ThatIsCutOffLeavesNothingDone) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a"},")" + longText());
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(BridgeLongQueue, OfAnObjectIsWalkedByItsKeys) {
  bridge_->flushMessageQueue(R"({"handlerName":"a","data":")" + longText() + R"("})");
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(warnings(),
              ElementsAre("WebViewJavascriptBridge: WARNING: Invalid string received: handlerName",
                          "WebViewJavascriptBridge: WARNING: Invalid string received: data"));
}

TEST_F(BridgeLongQueue, MayHold500000ValuesAndNoMore) {
  std::string data = "[0";
  for (int i = 1; i < 499'996; ++i) data += ",0";
  const std::string start = R"([{"handlerName":"a","data":)";
  bridge_->flushMessageQueue(start + data + "]}]");
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), IsEmpty());
  bridge_->flushMessageQueue(start + data + ",0]}]");
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), ElementsAre("WebViewJavascriptBridge: WARNING: A message queue holds too "
                                      "many values, it is left out"));
}

TEST_F(BridgeLongQueue, MayHoldATextOfTwoMebibytesAndNoLongerOne) {
  const std::string start = R"([{"handlerName":"a","data":")";
  const std::string text(std::size_t{2} * 1024 * 1024, 'x');
  bridge_->flushMessageQueue(start + text + R"("}])");
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), IsEmpty());
  bridge_->flushMessageQueue(start + text + R"(x"}])");
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), ElementsAre("WebViewJavascriptBridge: WARNING: A message queue holds too "
                                      "long a text, it is left out"));
}

TEST_F(BridgeLongQueue, MayHave16MebibytesAndNoMore) {
  const std::string queue = R"([{"handlerName":"a"}])";
  const std::string blanks(std::size_t{16} * 1024 * 1024 - queue.size(), ' ');
  bridge_->flushMessageQueue(queue + blanks);
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), IsEmpty());
  bridge_->flushMessageQueue(queue + blanks + ' ');
  memory_->scheduler.runReady();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(warnings(), ElementsAre(kNoQueue));
}

TEST_F(BridgeLongQueue, LeavesRoomForSomeMoreBehindItAndCountsTheRestAsFailed) {
  const std::string longest(kLongestQueue, ' ');
  for (int i = 0; i < 8; ++i) bridge_->flushMessageQueue(longest);
  EXPECT_THAT(warnings(), IsEmpty());
  bridge_->flushMessageQueue(R"([{"handlerName":"a"}])");
  EXPECT_THAT(warnings(), ElementsAre(kNoQueue));
}

TEST_F(BridgeLongQueue, OfABridgeThatClosesMeanwhileIsNotLookedAt) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":1},")" + longText() + R"("])");
  pumpOnce();
  bridge_->close();
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(BridgeLongQueue, IsLeftByAHandlerThatClosesTheBridge) {
  int calls = 0;
  bridge_->setHandler("close", [&](const Value&, const Bridge::ResponseCallback&) {
    ++calls;
    bridge_->close();
  });
  bridge_->flushMessageQueue(R"([{"handlerName":"close"},{"handlerName":"close"},")" + longText() +
                             R"("])");
  memory_->scheduler.runReady();
  EXPECT_EQ(calls, 1);
}

TEST_F(BridgeLongQueue, OfABridgeThatIsGoneIsNotLookedAt) {
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":1},")" + longText() + R"("])");
  bridge_.reset();
  memory_->scheduler.runReady();
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(BridgeLongQueue, MayBeKeptInPartByAHandler) {
  Value kept;
  bridge_->setHandler("keep",
                      [&](const Value& data, const Bridge::ResponseCallback&) { kept = data; });
  bridge_->flushMessageQueue(R"([{"handlerName":"keep","data":{"b":[1,"two"]}},")" + longText() +
                             R"("])");
  memory_->scheduler.runReady();
  bridge_.reset();
  EXPECT_EQ(textOf(kept), R"({"b":[1,"two"]})");
}

}  // namespace
}  // namespace zovk
