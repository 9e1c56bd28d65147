#include <sys/resource.h>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

#if defined(__has_feature)
constexpr bool kUndefinedBehaviorSanitizer = __has_feature(undefined_behavior_sanitizer);
#else
constexpr bool kUndefinedBehaviorSanitizer = false;
#endif

/// A helper that may be silent for 5 s, in time that passes by half a second at every look.
class HelperWatch : public ClientOfTheHelper {
 protected:
  HelperWatch() {
    HelperLauncher launcher = hosts_.launcher();
    launcher.pingInterval = 1ms;
    launcher.now = [this] { return now_ += passing_; };
    start(std::move(launcher));
    hosts_.last().becomeReady();
    pump();
    passing_ = 500ms;
  }
  void openWindow() {
    makeWindow();
    window_->makeKeyAndVisible();
  }
  std::size_t pings() { return hosts_.last().messages("ping").size(); }
  /// No timer runs any more.
  void expectRest() {
    pump();
    pollfd quiet{queue_.pollDescriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&quiet, 1, 20), 0);
  }

  std::chrono::steady_clock::time_point now_{100h};
  std::chrono::milliseconds passing_{0};
};

TEST_F(HelperWatch, AHelperThatDoesNotAnswerWhileAPopupIsUpIsStartedAgain) {
  openWindow();
  pumpUntil("the loss", [&] { return hosts_.count() == 2; });
  EXPECT_THAT(takeLines(),
              ElementsAre("[Error] Helper lost (it does not answer), starting it again"));
  hosts_.last().becomeReady();
  pumpUntil("the end", [&] { return controller_->calls.back().starts_with("failed"); });
  EXPECT_EQ(controller_->calls.back(), "failed: The helper cannot be used: it does not answer");
}

TEST_F(HelperWatch, AHelperThatAnswersGoesOn) {
  openWindow();
  for (int answered = 0; answered < 40;) {
    pumpUntil("a ping", [&] { return pings() > 0; });
    hosts_.last().send(R"({"type":"pong"})");
    ++answered;
  }
  EXPECT_EQ(hosts_.count(), 1U);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperWatch, AHelperWithNothingOnScreenIsLeftInPeace) {
  const auto hidden = client_->makeWindow({});
  expectRest();
  openWindow();
  pumpUntil("a ping", [&] { return pings() > 0; });
  window_.reset();
  expectRest();
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperWatch, AHelperThatStartsHasItsOwnTime) {
  openWindow();
  pumpUntil("the loss", [&] { return hosts_.count() == 2; });
  expectRest();
  EXPECT_EQ(pings(), 0U);
}

TEST_F(HelperWatch, EndsWithTheClient) {
  openWindow();
  client_->shutDown();
  expectRest();
}

TEST_F(HelperWatch, AHelperThatCannotRunCostsAPauseAndALineInsteadOfAProcessForEveryWindow) {
  passing_ = 0ms;
  hosts_.refuse("no such program");
  killHelper();
  takeLines();
  std::size_t answers = 0;
  const auto request = [&] {
    const auto controller = std::make_shared<RecordingController>();
    const auto window = client_->makeWindow({});
    window->setRootViewController(controller);
    pump();
    if (controller->calls.back() == "failed: The helper cannot be used: no such program") {
      ++answers;
    }
  };
  for (int i = 0; i < 100; ++i) request();
  EXPECT_EQ(answers, 100U) << "each is answered";
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("starting it again"), HasSubstr("giving up"),
                                       "[Error] Helper is not started for every popup while it "
                                       "fails"));
  now_ += 1s;
  for (int i = 0; i < 100; ++i) request();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("starting it again"), HasSubstr("giving up")));
  now_ += 2s;
  hosts_.accept();
  const auto window = client_->makeWindow({});
  EXPECT_EQ(hosts_.count(), 2U) << "it runs again";
}

/// Lets no further descriptor be opened while it lives.
class NoDescriptorsLeft {
 public:
  NoDescriptorsLeft() {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const UniqueFd lowest(::dup(0));
    const rlimit full{static_cast<rlim_t>(lowest.get()), before_.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &full);
  }
  ~NoDescriptorsLeft() { ::setrlimit(RLIMIT_NOFILE, &before_); }
  NoDescriptorsLeft(const NoDescriptorsLeft&) = delete;
  NoDescriptorsLeft& operator=(const NoDescriptorsLeft&) = delete;

 private:
  rlimit before_{};
};

TEST_F(ClientOfTheHelper, ACommandForAFullSocketFailsFromThePumpWhenNoDescriptorIsLeft) {
  if (kUndefinedBehaviorSanitizer) GTEST_SKIP() << "the sanitizer needs descriptors of its own";
  startReady();
  const auto controller = std::make_shared<RecordingController>();
  const auto window = client_->makeWindow({});
  window->setRootViewController(controller);
  const auto page = client_->makeWebView({});
  const NoDescriptorsLeft limit;
  EXPECT_NO_THROW(page->load("https://a/" + std::string(4'000'000, 'x')));
  EXPECT_THAT(takeLines(), IsEmpty());
  EXPECT_NO_THROW(pump());
  EXPECT_THAT(controller->calls.back(), HasSubstr("failed: The helper cannot be used"));
  const auto lines = takeLines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0], HasSubstr("epoll_create1: Too many open files"));
}

}  // namespace
}  // namespace zovk
