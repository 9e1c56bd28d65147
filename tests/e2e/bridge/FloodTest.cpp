#include <unistd.h>

#include "e2e/bridge/BridgePageFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

constexpr int kMessages = 100'000;
constexpr std::size_t kLongText = 2'000'000;

class Flood : public BridgePageFixture {
 protected:
  /// Counts what arrives in order; the first that does not stops the count.
  void countInOrder() {
    bridge().registerHandler("count", [this](const Value& data, const Respond&) {
      if (data && *data == arrived_) ++arrived_;
    });
  }

  std::int64_t arrived_ = 0;
};

TEST_F(Flood, OfMessagesArrivesWholeAndInOrder) {
  open(
      bridgePage("bridge.registerHandler('start', () => {"
                 "  for (let i = 0; i < " +
                 std::to_string(kMessages) +
                 "; ++i) bridge.callHandler('count', i);"
                 "  bridge.callHandler('tell', 'sent'); });"));
  countInOrder();
  bridge().callHandler("start");
  const double before = privateMegabytes(getpid());
  const auto start = std::chrono::steady_clock::now();
  pumpUntil([&] { return !told().empty(); }, "the last message", std::chrono::seconds(100));
  EXPECT_EQ(arrived_, kMessages);
  evaluate("1");  // behind every signal that the page gave
  const auto seconds = std::chrono::steady_clock::now() - start;
  RecordProperty(
      "milliseconds",
      std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(seconds).count()));
  RecordProperty("megabytes", std::to_string(privateMegabytes(getpid()) - before));
  EXPECT_LT(privateMegabytes(getpid()) - before, 200);
}

TEST_F(Flood, OfCallsIsAnsweredCallByCall) {
  open(
      bridgePage("let answered = 0;"
                 "for (let i = 0; i < 2000; ++i) bridge.callHandler('double', 'a', answer => {"
                 "  if (answer === 'aa' && ++answered === 2000) bridge.callHandler('tell', 'all');"
                 "});"));
  awaitTold(1);
}

TEST_F(Flood, OfOneLongTextGoesBothWays) {
  open(
      bridgePage("bridge.registerHandler('echo', (text, respond) => respond(text));"
                 "bridge.callHandler('tell', 'ready');"));
  awaitTold(1);
  std::string text(kLongText, 'x');
  for (std::size_t i = 0; i + 8 < text.size(); i += 1000) text.replace(i, 6, "'\"\\\né");
  Value answer;
  bridge().callHandler("echo", boost::json::value(text), [&](const Value& data) { answer = data; });
  pumpUntil([&] { return answer.has_value(); }, "the echo", std::chrono::seconds(60));
  ASSERT_TRUE(answer && answer->is_string());
  EXPECT_TRUE(answer->get_string() == text);
}

}  // namespace
}  // namespace zovk
