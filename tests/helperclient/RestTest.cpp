// A helper that has nothing to show rests after a while.
#include <limits>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::chrono::milliseconds kSoon{1};
constexpr std::chrono::hours kNever{1000};

class HelperAtRest : public ClientOfTheHelper {
 protected:
  void startReady(std::chrono::milliseconds restAfter, std::chrono::milliseconds endAfter) {
    HelperLauncher launcher = hosts_.launcher();
    launcher.restAfter = restAfter;
    launcher.endAfter = endAfter;
    start(std::move(launcher));
    hosts_.last().becomeReady();
    pump();
    hosts_.last().messages();
  }
  void awaitRest() {
    pumpUntil("rest", [this] { return !hosts_.last().messages("rest").empty(); });
  }
  void awaitEnd() {
    pumpUntil("the end", [this] { return hosts_.last().sawEnd(); });
  }
  /// Returns whether the game would be woken within a moment.
  bool wakes() {
    pollfd ready{queue_.pollDescriptor(), POLLIN, 0};
    return ::poll(&ready, 1, 50) > 0;
  }
};

TEST_F(HelperAtRest, GivesUpWhatItHeldReadyWhenNothingIsShown) {
  startReady(kSoon, kNever);
  awaitRest();
  EXPECT_FALSE(hosts_.last().sawEnd());
}

TEST_F(HelperAtRest, EndsLaterWithoutALine) {
  startReady(kSoon, kSoon);
  awaitEnd();
  pump();
  EXPECT_EQ(hosts_.count(), 1U);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAtRest, WakesTheGameTwiceAndNoMore) {
  startReady(kSoon, kSoon);
  awaitEnd();
  pump();
  EXPECT_FALSE(wakes());
}

TEST_F(HelperAtRest, StaysReadyWhileAWindowIsThere) {
  startReady(kSoon, kSoon);
  const auto window = client_->makeWindow({});
  window->makeKeyAndVisible();
  pump();
  hosts_.last().messages();
  EXPECT_FALSE(wakes());
  EXPECT_THAT(commands(), Not(Contains(HasSubstr("rest"))));
}

TEST_F(HelperAtRest, CountsFromTheLastWindow) {
  startReady(kSoon, kNever);
  auto window = client_->makeWindow({});
  window->makeKeyAndVisible();
  pump();
  hosts_.last().messages();
  window.reset();
  awaitRest();
}

TEST_F(HelperAtRest, IsReadyAgainWhenSomethingMayBeShown) {
  startReady(kSoon, kNever);
  awaitRest();
  client_->prepare();
  client_->prepare();
  EXPECT_EQ(hosts_.last().messages("prepare").size(), 1U);
  awaitRest();
}

TEST_F(HelperAtRest, IsNotToldToBeReadyWhenItIs) {
  startReady(kNever, kNever);
  client_->prepare();
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperAtRest, IsStartedAnewWhenSomethingMayBeShown) {
  startReady(kSoon, kSoon);
  awaitEnd();
  client_->prepare();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(hosts_.last().commands(), ElementsAre(HasSubstr("hello")));
}

TEST_F(HelperAtRest, IsStartedAnewForTheNextWindow) {
  startReady(kSoon, kSoon);
  awaitEnd();
  const auto controller = std::make_shared<RecordingController>();
  const auto window = client_->makeWindow({});
  window->setRootViewController(controller);
  pump();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(controller->calls, Not(Contains(HasSubstr("failed"))));
  EXPECT_THAT(hosts_.last().commands(), Contains(HasSubstr("window.create")));
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAtRest, CanBeReadyForLongerThanAnyGameRuns) {
  startReady(std::chrono::seconds(std::numeric_limits<std::uint32_t>::max()), kNever);
  EXPECT_FALSE(wakes());
}

TEST_F(HelperAtRest, MayHaveNoTimeAtAll) {
  startReady(std::chrono::milliseconds(0), kNever);
  awaitRest();
}

}  // namespace
}  // namespace zovk
