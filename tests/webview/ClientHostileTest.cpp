// What a page that posts too much costs the game: the processor time of one pump, and memory.
// Figures are printed; the bounds here leave room for busy machines.
#include <algorithm>
#include <ctime>
#include <iostream>

#include <malloc.h>

#include "ClientFixture.h"

namespace zovk {
namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::chrono::milliseconds kBudget{2};
/// The handler's own work on the longest message is within a millisecond on a machine at rest.
constexpr std::chrono::milliseconds kMoreThanTheBudget{20};
constexpr std::size_t kTwoMebibytes = 2 * 1024 * 1024;

Microseconds processorTime() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

std::size_t memoryInUse() {
  const auto heap = ::mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

/// Takes long messages as a game does that has no use for them.
class QuietScreen : public ClientScreen {
 public:
  using ClientScreen::ClientScreen;
  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override {
    ++taken;
    if (!body || !body->is_array()) ClientScreen::didReceiveScriptMessage(name, body);
  }
  int taken = 0;
};

class HostilePageOfGame : public HelperClientLive,
                          public testing::WithParamInterface<std::pair<const char*, const char*>> {
 protected:
  HostilePageOfGame() { screen_ = quiet_ = std::make_shared<QuietScreen>(*client_); }
  /// Pumps until the page's last word, and keeps the longest pump.
  void pumpToTheLastWord() {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (screen_->messages.empty() || screen_->messages.back() != R"(Game "last")") {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline);
      screen_->messages.clear();
      const Microseconds before = processorTime();
      queue_->pump(kBudget);
      longest_ = std::max(longest_, processorTime() - before);
    }
    screen_->messages.clear();
    screen_->messages.shrink_to_fit();
  }
  void run(const std::string& script) {
    screen_->page->evaluateJavaScript("{const game = window.webkit.messageHandlers.Game;" + script +
                                          "; setTimeout(() => game.postMessage('last'), 1500)}",
                                      {});
  }
  std::shared_ptr<QuietScreen> quiet_;
  Microseconds longest_{0};
};

TEST_P(HostilePageOfGame, CostsNoPumpMoreThanItsBudgetAndNoMemoryThatStays) {
  openPage();
  run("0");
  pumpToTheLastWord();
  longest_ = {};
  const std::size_t before = memoryInUse();
  run(GetParam().second);
  pumpToTheLastWord();
  const std::size_t after = memoryInUse();
  std::cout << GetParam().first << ": " << quiet_->taken << " messages, longest pump "
            << longest_.count() << " us at a budget of " << Microseconds(kBudget).count()
            << ", memory " << static_cast<double>(after) - static_cast<double>(before)
            << " bytes\n";
  EXPECT_LT(longest_, kBudget + kMoreThanTheBudget);
  EXPECT_LT(after, before + kTwoMebibytes);
}

INSTANTIATE_TEST_SUITE_P(
    That, HostilePageOfGame,
    testing::Values(
        std::pair("PostsAListInAListTwice",
                  "let a = []; for (let i = 0; i < 23; ++i) a = [a, a]; game.postMessage(a)"),
        std::pair("PostsTenMillionHoles", "game.postMessage(new Array(1e7))"),
        std::pair("PostsAllThatIsTaken",
                  "const t = 'x'.repeat((1 << 20) - 30000);"
                  "for (let i = 0; i < 7; ++i) game.postMessage([t, new Array(9000).fill([])])"),
        std::pair("PostsWithoutEnd",
                  "for (let i = 0; i < 3000; ++i) game.postMessage([i, 'x'.repeat(1000)])")),
    [](const auto& test) { return std::string(test.param.first); });

}  // namespace
}  // namespace zovk
