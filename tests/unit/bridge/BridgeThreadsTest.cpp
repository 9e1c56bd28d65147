#include <atomic>
#include <thread>

#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class BridgeThreads : public BridgeFixture {
 protected:
  /// Runs `work` on another thread, and the main queue until it ends.
  void runBeside(const std::function<void()>& work) {
    std::atomic<bool> ended = false;
    std::thread other([&] {
      work();
      ended = true;
    });
    memory_->scheduler.runUntil([&] { return ended.load(); }, "the other thread");
    other.join();
  }
};

TEST_F(BridgeThreads, AMessageOfAnotherThreadIsHandedOverOnTheMainThreadBeforeTheSendReturns) {
  open();
  bool onMainThread = false;
  page_->whenRun = [&](const std::string&) { onMainThread = memory_->scheduler.isMainThread(); };
  std::size_t handedOver = 0;
  runBeside([&] {
    bridge_->sendData(1, nullptr, "a");
    handedOver = page_->scripts.size();
  });
  EXPECT_TRUE(onMainThread);
  EXPECT_EQ(handedOver, 1U);
}

TEST_F(BridgeThreads, AHeldMessageOfAnotherThreadWaitsForNobody) {
  std::thread other([this] { bridge_->sendData(1, nullptr, "a"); });
  other.join();  // with nobody to run the main queue
  EXPECT_THAT(*bridge_->startupMessageQueue(), SizeIs(1));
}

TEST_F(BridgeThreads, AResponseMayComeFromAnotherThread) {
  open();
  Bridge::ResponseCallback kept;
  bridge_->setHandler(
      "a", [&](const Value&, const Bridge::ResponseCallback& respond) { kept = respond; });
  bridge_->flushMessageQueue(R"([{"handlerName":"a","callbackId":"cb_1_9"}])");
  runBeside([&] { kept(7); });
  EXPECT_THAT(scripts(), ElementsAre(commandFor(R"({"responseId":"cb_1_9","responseData":7})")));
}

TEST_F(BridgeThreads, HeldMessagesLeaveOnTheMainThreadWhoeverReleasesThem) {
  bridge_->sendData(1, nullptr, "a");
  runBeside([&] { bridge_->injectJavascriptFile(); });
  EXPECT_THAT(scripts(), ElementsAre(ZOVKPopupWebViewJavascriptBridge_js(),
                                     commandFor(R"({"data":1,"handlerName":"a"})")));
}

TEST_F(BridgeThreads, AWaitingSenderIsLetGoWhenTheMainQueueShutsDown) {
  open();
  std::thread other([this] { bridge_->sendData(1, nullptr, "a"); });
  while (memory_->scheduler.pendingTaskCount() == 0) std::this_thread::yield();
  memory_->shutDown();
  other.join();
  std::thread late([this] { bridge_->sendData(2, nullptr, "b"); });
  late.join();
  EXPECT_THAT(scripts(), IsEmpty());
}

TEST_F(BridgeThreads, ManyMaySendRespondAndRegisterAtOnce) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 50;
  open();
  std::vector<Bridge::ResponseCallback> responders(kThreads);
  int next = 0;
  bridge_->setHandler("a", [&](const Value&, const Bridge::ResponseCallback& respond) {
    responders[static_cast<std::size_t>(next++)] = respond;
  });
  for (int i = 0; i < kThreads; ++i) {
    bridge_->flushMessageQueue(R"([{"handlerName":"a","callbackId":"cb"}])");
  }
  std::atomic<int> ended = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      for (int j = 0; j < kRounds; ++j) {
        bridge_->sendData(
            j, [](const Value&) {}, "x");
        responders[static_cast<std::size_t>(i)](j);
        bridge_->setHandler(std::to_string(i), [](const Value&, const auto&) {});
        bridge_->removeHandler(std::to_string(i));
        Bridge::setLogMaxLength(500);
      }
      ++ended;
    });
  }
  int answered = 0;
  memory_->scheduler.runUntil(
      [&] {  // meanwhile the page answers
        for (const std::string& id : bridge_->responseCallbacks()) {
          bridge_->flushMessageQueue("[{\"responseId\":\"" + id + "\"}]");
          ++answered;
        }
        return ended == kThreads;
      },
      "the senders");
  for (auto& thread : threads) thread.join();
  answered += static_cast<int>(bridge_->responseCallbacks().size());
  EXPECT_EQ(answered, kThreads * kRounds);
  EXPECT_EQ(bridge_->uniqueId(), kThreads * kRounds);
  EXPECT_THAT(scripts(), SizeIs(2 * kThreads * kRounds));
  EXPECT_THAT(bridge_->messageHandlers(), ElementsAre("a"));
}

TEST_F(BridgeThreads, NoMessageIsLostWhenOthersSendDuringTheInjection) {
  constexpr int kMessages = 200;
  std::atomic<int> sent = 0;
  std::thread other([&] {
    for (int i = 0; i < kMessages; ++i) {
      bridge_->sendData(i, nullptr, "x");
      ++sent;
    }
  });
  while (sent < kMessages / 4) std::this_thread::yield();
  bridge_->injectJavascriptFile();
  memory_->scheduler.runUntil([&] { return sent == kMessages; }, "the sender");
  other.join();
  std::vector<std::string> expected{ZOVKPopupWebViewJavascriptBridge_js()};
  for (int i = 0; i < kMessages; ++i) {
    expected.push_back(commandFor(R"({"data":)" + std::to_string(i) + R"(,"handlerName":"x"})"));
  }
  EXPECT_EQ(scripts(), expected);
}

}  // namespace
}  // namespace zovk
