#include <csignal>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

#include "fixtures/ProcessFacts.h"
#include "hostile/HostileScreen.h"
#include "hostile/Tally.h"

namespace zovk {
namespace {

constexpr std::chrono::seconds kPatience(30);

class Kills : public HostileScreen {
 protected:
  std::chrono::microseconds moment(int milliseconds) {
    return std::chrono::microseconds(
        std::uniform_int_distribution<int>(0, milliseconds * 1000)(random_));
  }
  static void killNamed(const std::string& name) {
    for (const pid_t process : descendantsNamed(getpid(), name)) kill(process, SIGKILL);
  }
  void open(const std::string& answer = "skip") {
    bundle().addPage(popup("welcome", 1), answeringPage(answer, "", true));
    start();
    askAndAwait("warm");
  }
  /// Asks for the popup; how it ended.
  std::string askAndAwait(const std::string& round, const std::function<void()>& attack = {}) {
    const std::size_t before = answers().size();
    ZOVKPopup::showPopup("welcome", 0, recordAnswer());
    if (attack) attack();
    if (!playUntil([&] { return answers().size() > before; }, kPatience)) {
      ADD_FAILURE() << "no answer, " << round << "\n" << allLines();
      return "never answered";
    }
    settle();
    EXPECT_EQ(answers().size(), before + 1) << round;
    const Answer& answer = answers().back();
    EXPECT_TRUE(answer.first == 0 || (answer.first == -1 && !answer.second.empty())) << round;
    return answer.first == 0 ? "answered by the page" : "ended with -1: " + answer.second;
  }
  void playFor(std::chrono::microseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
      ZOVKPopupHost::pump();
      pollfd ready{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
      poll(&ready, 1, 1);
    }
  }

 private:
  std::mt19937 random_{std::random_device{}()};
};

TEST_F(Kills, OfTheHelperAtAnyMomentEndWithOneAnswer) {
  open();
  Tally tally("the helper is killed");
  for (std::size_t i = 0; i < rounds(6, 250); ++i) {
    tally.add(askAndAwait("round " + std::to_string(i), [&] {
      playFor(moment(150));
      if (screen().helperProcessId() > 0) kill(screen().helperProcessId(), SIGKILL);
    }));
  }
}

TEST_F(Kills, OfThePagesProcessAtAnyMomentEndWithOneAnswer) {
  open();
  Tally tally("the page's process is killed");
  for (std::size_t i = 0; i < rounds(12, 200); ++i) {
    tally.add(askAndAwait("round " + std::to_string(i), [&] {
      playFor(moment(100));
      killNamed("WebKitWebProces");
    }));
  }
}

TEST_F(Kills, OfTheNetworkProcessAtAnyMomentEndWithOneAnswer) {
  open();
  Tally tally("the network process is killed");
  for (std::size_t i = 0; i < rounds(6, 150); ++i) {
    tally.add(askAndAwait("round " + std::to_string(i), [&] {
      playFor(moment(100));
      killNamed("WebKitNetworkPr");
    }));
  }
}

TEST_F(Kills, OfAStoppedHelperAreNotNeededItIsReplaced) {
  open();
  Tally tally("the helper is stopped");
  for (std::size_t i = 0; i < rounds(1, 10); ++i) {
    tally.add(askAndAwait("round " + std::to_string(i), [&] {
      playFor(moment(60));
      if (screen().helperProcessId() > 0) kill(screen().helperProcessId(), SIGSTOP);
    }));
  }
}

TEST_F(Kills, OfTheGameLeaveNothingBehindAfterASecond) {
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", false));
  bundle().write();
  Tally tally("the game is killed");
  for (std::size_t i = 0; i < rounds(3, 100); ++i) {
    const pid_t game = fork();
    if (game == 0) {
      ZOVKPopupHost::setUp(settings());
      ZOVKPopup::showPopup("welcome", 0, nullptr);
      while (true) {
        pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
        poll(&events, 1, 100);
        ZOVKPopupHost::pump();
      }
    }
    // Any moment from the helper's start on is as good as another.
    poll(nullptr, 0, static_cast<int>(moment(900).count() / 1000));
    const std::vector<pid_t> processes = descendantsOf(game);
    kill(game, SIGKILL);
    waitpid(game, nullptr, 0);
    const auto start = std::chrono::steady_clock::now();
    const auto someLive = [&] {
      for (const pid_t process : processes) {
        if (isAlive(process)) return true;
      }
      return false;
    };
    while (someLive() && std::chrono::steady_clock::now() - start < kPatience) poll(nullptr, 0, 5);
    const Seconds taken = std::chrono::steady_clock::now() - start;
    tally.add(processes.empty() ? "before it had a helper" : "all gone");
    tally.measure("milliseconds until all were gone", taken.count() * 1e3);
    EXPECT_LT(taken.count(), 1.0) << "round " << i;
  }
}

}  // namespace
}  // namespace zovk
