#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BridgeHandler : public BridgeFixture {
 protected:
  BridgeHandler() { open(); }
  /// The page calls "a" and wants a response.
  void call() { bridge_->flushMessageQueue(R"([{"handlerName":"a","callbackId":"cb_1_9"}])"); }
  void keepResponder() {
    bridge_->setHandler(
        "a", [this](const Value&, const Bridge::ResponseCallback& respond) { kept_ = respond; });
  }
  static std::string response(const std::string& data) {
    return commandFor(R"({"responseId":"cb_1_9","responseData":)" + data + "}");
  }

  Bridge::ResponseCallback kept_;
};

TEST_F(BridgeHandler, AnswersWithAMessageOfItsOwn) {
  bridge_->setHandler("a", [](const Value&, const Bridge::ResponseCallback& respond) {
    respond(boost::json::value{{"ok", true}});
  });
  call();
  EXPECT_THAT(scripts(), ElementsAre(response(R"({"ok":true})")));
}

TEST_F(BridgeHandler, AnsweringWithNothingGivesThePageNull) {
  bridge_->setHandler("a", [](const Value&, const Bridge::ResponseCallback& respond) {
    respond(std::nullopt);
    respond(nullptr);
  });
  call();
  EXPECT_THAT(scripts(), ElementsAre(response("null"), response("null")));
}

TEST_F(BridgeHandler, MayAnswerLaterAndAsOftenAsItLikes) {
  keepResponder();
  call();
  EXPECT_THAT(scripts(), IsEmpty());
  kept_(1);
  kept_("two");
  EXPECT_THAT(scripts(), ElementsAre(response("1"), response(R"("two")")));
}

TEST_F(BridgeHandler, MayNeverAnswer) {
  keepResponder();
  call();
  kept_ = nullptr;
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_EQ(bridge_.use_count(), 1) << "nothing keeps the bridge any more";
}

TEST_F(BridgeHandler, HasACallbackThatDoesNothingWhenThePageWantsNoResponse) {
  keepResponder();
  bridge_->flushMessageQueue(R"([{"handlerName":"a"}])");
  ASSERT_TRUE(kept_);
  kept_(1);
  kept_(std::nullopt);
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_EQ(bridge_.use_count(), 1);
}

TEST_F(BridgeHandler, ItsResponseCallbackKeepsTheBridgeAliveUntilItIsLetGo) {
  keepResponder();
  call();
  const std::weak_ptr<Bridge> weak = bridge_;
  bridge_.reset();
  kept_(1);
  EXPECT_THAT(scripts(), ElementsAre(response("1")));
  EXPECT_FALSE(weak.expired());
  kept_ = nullptr;
  EXPECT_TRUE(weak.expired());
}

TEST_F(BridgeHandler, ItsAnswerWaitsForTheNextInjectionAfterAReset) {
  keepResponder();
  call();
  bridge_->reset();
  kept_(1);
  EXPECT_THAT(scripts(), IsEmpty());
  bridge_->setupMessageQueue();
  EXPECT_THAT(scripts(), ElementsAre(response("1")));
}

TEST_F(BridgeHandler, MayRemoveItselfWhileItRuns) {
  const auto life = std::make_shared<int>(0);
  bridge_->setHandler("a", [this, life](const Value&, const Bridge::ResponseCallback& respond) {
    bridge_->removeHandler("a");
    respond(++*life);
  });
  call();
  EXPECT_THAT(scripts(), ElementsAre(response("1")));
  EXPECT_THAT(bridge_->messageHandlers(), IsEmpty());
  EXPECT_EQ(life.use_count(), 1);
}

TEST_F(BridgeHandler, MayReplaceItselfWhileItRuns) {
  const auto life = std::make_shared<int>(0);
  bridge_->setHandler("a", [this, life](const Value&, const Bridge::ResponseCallback&) {
    noteCallsOf("a");
    ++*life;
  });
  bridge_->flushMessageQueue(R"([{"handlerName":"a","data":1},{"handlerName":"a","data":2}])");
  EXPECT_EQ(*life, 1);
  EXPECT_THAT(told_, ElementsAre("2"));
  EXPECT_EQ(life.use_count(), 1);
}

TEST_F(BridgeHandler, MayResetTheBridgeWhileItRuns) {
  bridge_->setHandler("a", [this](const Value&, const Bridge::ResponseCallback& respond) {
    bridge_->reset();
    respond(1);
  });
  call();
  EXPECT_THAT(scripts(), IsEmpty());
  EXPECT_EQ(bridge_->startupMessageQueue()->size(), 1U);
}

TEST_F(BridgeHandler, MayLetTheBridgeGoWhileItRuns) {
  const std::weak_ptr<Bridge> weak = bridge_;
  bridge_->setHandler("a", [this](const Value& data, const Bridge::ResponseCallback&) {
    told_.push_back(textOf(data));
    bridge_.reset();
  });
  Bridge* const bridge = bridge_.get();
  bridge->flushMessageQueue(R"([{"handlerName":"a","data":1},{"handlerName":"a","data":2}])");
  EXPECT_THAT(told_, ElementsAre("1", "2"));
  EXPECT_TRUE(weak.expired());
}

TEST_F(BridgeHandler, MayCallThePageAndFlushAgainWhileItRuns) {
  bridge_->setHandler("a", [this](const Value&, const Bridge::ResponseCallback& respond) {
    bridge_->sendData(1, record(told_), "of the page");
    bridge_->flushMessageQueue(R"([{"responseId":"objc_cb_1","responseData":"inner"}])");
    respond(2);
  });
  call();
  EXPECT_THAT(told_, ElementsAre("\"inner\""));
  EXPECT_EQ(scripts().size(), 2U);
}

TEST_F(BridgeHandler, AResponseCallbackMayLetTheBridgeGoWhileItRuns) {
  const std::weak_ptr<Bridge> weak = bridge_;
  bridge_->sendData(
      1, [this](const Value&) { bridge_.reset(); }, "x");
  Bridge* const bridge = bridge_.get();
  bridge->flushMessageQueue(R"([{"responseId":"objc_cb_1"},5])");
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(warnings().size(), 1U) << "of the number";
}

TEST_F(BridgeHandler, IsLetGoWithoutALock) {
  auto guard = std::shared_ptr<void>(nullptr, [this](void*) { noteCallsOf("last words"); });
  bridge_->setHandler("a", [guard](const Value&, const Bridge::ResponseCallback&) {});
  guard.reset();
  bridge_->setHandler("a", nullptr);
  EXPECT_THAT(bridge_->messageHandlers(), ElementsAre("a", "last words"));
  guard = std::shared_ptr<void>(nullptr, [this](void*) { noteCallsOf("very last words"); });
  bridge_->setHandler("a", [guard](const Value&, const Bridge::ResponseCallback&) {});
  guard.reset();
  bridge_->removeHandler("a");
  EXPECT_THAT(bridge_->messageHandlers(), ElementsAre("last words", "very last words"));
}

TEST_F(BridgeHandler, HandlersAndCallbacksGoWithTheBridge) {
  const auto life = std::make_shared<int>(0);
  bridge_->setHandler("a", [life](const Value&, const Bridge::ResponseCallback&) {});
  bridge_->sendData(
      1, [life](const Value&) {}, "x");
  bridge_.reset();
  EXPECT_EQ(life.use_count(), 1);
}

}  // namespace
}  // namespace zovk
