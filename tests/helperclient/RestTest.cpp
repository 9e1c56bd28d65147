// A helper that has nothing to show rests after a while.
#include <limits>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::chrono::milliseconds kSoon{1};
constexpr std::chrono::hours kNever{1000};

class HelperAtRest : public ClientOfTheHelper {
 protected:
  void setTimes(std::chrono::milliseconds restAfter, std::chrono::milliseconds endAfter) {
    launcher_ = hosts_.launcher();
    launcher_.restAfter = restAfter;
    launcher_.endAfter = endAfter;
  }
  void startReady(std::chrono::milliseconds restAfter, std::chrono::milliseconds endAfter) {
    setTimes(restAfter, endAfter);
    startReady();
  }
  void startReady() {
    start(launcher_);
    hosts_.last().becomeReady();
    pump();
    hosts_.last().messages();
  }
  /// Waits until the helper has ended and another waits in its place, the one of that number.
  void awaitRest(std::size_t number = 2) {
    pumpUntil("rest", [&] { return hosts_.count() == number; });
  }
  void awaitEnd() {
    awaitRest();
    pumpUntil("the end", [this] { return hosts_.last().sawEnd(); });
    pump();
  }
  void openWindow() {
    makeWindow();
    pump();
  }
  /// Returns whether the game would be woken within a moment.
  bool wakes() {
    pollfd ready{queue_.pollDescriptor(), POLLIN, 0};
    return ::poll(&ready, 1, 50) > 0;
  }

  HelperLauncher launcher_;
};

TEST_F(HelperAtRest, IsReplacedByOneThatIsNotGreetedYet) {
  startReady(kSoon, kNever);
  awaitRest();
  EXPECT_TRUE(hosts_.first().sawEnd());
  EXPECT_FALSE(hosts_.last().sawEnd());
  EXPECT_THAT(commands(), IsEmpty());
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAtRest, DoesNotWakeTheGame) {
  startReady(kSoon, kNever);
  awaitRest();
  EXPECT_FALSE(wakes());
}

TEST_F(HelperAtRest, EndsLaterWithoutALine) {
  startReady(kSoon, kSoon);
  awaitEnd();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAtRest, WakesTheGameTwiceAndNoMore) {
  startReady(kSoon, kSoon);
  awaitEnd();
  EXPECT_FALSE(wakes());
}

TEST_F(HelperAtRest, StaysReadyWhileAWindowIsThere) {
  startReady(kSoon, kSoon);
  const auto window = client_->makeWindow({});
  window->makeKeyAndVisible();
  pump();
  EXPECT_FALSE(wakes());
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperAtRest, CountsFromTheLastWindow) {
  startReady(kSoon, kNever);
  auto window = client_->makeWindow({});
  window->makeKeyAndVisible();
  pump();
  window.reset();
  awaitRest();
}

TEST_F(HelperAtRest, IsGreetedOnceWhenSomethingMayBeShown) {
  startReady(kSoon, kNever);
  awaitRest();
  client_->prepare();
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello")));
  EXPECT_EQ(hosts_.count(), 2U);
  hosts_.last().becomeReady();
  awaitRest(3);
}

TEST_F(HelperAtRest, IsGreetedForTheNextWindow) {
  startReady(kSoon, kNever);
  awaitRest();
  openWindow();
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello"), HasSubstr("window.create")));
  EXPECT_THAT(controller_->calls, Not(Contains(HasSubstr("failed"))));
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperAtRest, IsNotToldToBeReadyWhenItIs) {
  startReady(kNever, kNever);
  client_->prepare();
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperAtRest, CountsFromTheLastTimeThatSomethingWasLikely) {
  constexpr std::chrono::milliseconds kAfter{300};
  startReady(kAfter, kNever);
  EXPECT_FALSE(wakes());
  const auto asked = std::chrono::steady_clock::now();
  client_->prepare();
  awaitRest();
  EXPECT_GE(std::chrono::steady_clock::now() - asked, kAfter);
}

TEST_F(HelperAtRest, HearsOfTheGameWithTheGreetingOnly) {
  settings_.nativeWindow = 0;
  startReady(kSoon, kNever);
  client_->gameWindowDidBecomeKey();
  awaitRest();
  client_->gameWindowDidResize(640, 480);
  client_->gamePadDidPress(ZOVKPopupGamePad::kPress, "A", "B");
  EXPECT_THAT(commands(), IsEmpty());
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(AllOf(HasSubstr("hello"), HasSubstr("\"key\":true"),
                                            HasSubstr("\"gameSize\":[0,0,6.4E2,4.8E2]"))));
}

TEST_F(HelperAtRest, IsNotToldOfAKeyboardThatTheGameDidNotReport) {
  settings_.nativeWindow = 0;
  startReady(kSoon, kNever);
  awaitRest();
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(Not(HasSubstr("\"key\""))));
}

TEST_F(HelperAtRest, KnowsWhatDrewBeforeAndNeedNotLook) {
  setTimes(kSoon, kNever);
  start(launcher_);
  EXPECT_THAT(commands(), ElementsAre(Not(HasSubstr("renderer"))));
  receive(R"({"type":"ready","version":1,"screen":[0,0,1280,800],"schemes":[],)"
          R"("drawing":"hardware","renderer":"Some GPU"})");
  awaitRest();
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(HasSubstr(R"("renderer":"Some GPU")")));
  hosts_.last().becomeReady();  // without having looked
  awaitRest(3);
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(HasSubstr(R"("renderer":"Some GPU")")));
}

TEST_F(HelperAtRest, OpensNoAddress) {
  startReady(kSoon, kNever);
  awaitRest();
  std::vector<bool> answers;
  client_->openUrl("http://a/", [&](bool opened) { answers.push_back(opened); });
  pump();
  EXPECT_THAT(answers, ElementsAre(false));
  EXPECT_THAT(commands(), IsEmpty());
}

TEST_F(HelperAtRest, OwesNoAnswer) {
  startReady(kSoon, kNever);
  std::vector<bool> answers;
  client_->openUrl("http://a/", [&](bool opened) { answers.push_back(opened); });
  awaitRest();
  pump();
  EXPECT_THAT(answers, ElementsAre(false));
}

TEST_F(HelperAtRest, NeedNotBecomeReadyBeforeItIsGreeted) {
  setTimes(kSoon, kNever);
  start(launcher_);
  hosts_.last().becomeReady();
  awaitRest();
  hosts_.last().becomeReady();  // nobody asked
  pump();
  client_->prepare();
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello")));
  EXPECT_FALSE(wakes()) << "it is not ready yet";
}

TEST_F(HelperAtRest, HasItsTimeToBecomeReadyFromTheGreetingOn) {
  setTimes(kSoon, kNever);
  launcher_.readyTimeout = std::chrono::milliseconds(20);
  startReady();
  awaitRest();
  EXPECT_FALSE(wakes());
  client_->prepare();
  pumpUntil("the loss", [this] { return hosts_.count() == 3; });
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("did not become ready in time")));
}

TEST_F(HelperAtRest, HasASecondChanceWhenItIsNeededAgain) {
  setTimes(kSoon, kNever);
  start(launcher_);
  auto window = client_->makeWindow({});
  hosts_.last().becomeReady();
  pump();
  killHelper();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("starting it again")));
  window.reset();
  hosts_.last().becomeReady();
  awaitRest(3);
  client_->prepare();
  killHelper();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("starting it again")));
}

TEST_F(HelperAtRest, IsMissedByNobodyWhenItIsLost) {
  startReady(kSoon, kNever);
  awaitRest();
  killHelper();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(takeLines(), IsEmpty());
  EXPECT_FALSE(wakes());
  client_->prepare();
  EXPECT_EQ(hosts_.count(), 3U);
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello")));
}

TEST_F(HelperAtRest, IsMissedByNobodyWhenItCannotBeStarted) {
  setTimes(kSoon, kNever);
  start(launcher_);
  hosts_.refuse("no such program");
  hosts_.last().becomeReady();
  pumpUntil("the end", [this] { return hosts_.last().sawEnd(); });
  pump();
  EXPECT_THAT(takeLines(), IsEmpty());
  hosts_.accept();
  client_->prepare();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello")));
}

TEST_F(HelperAtRest, IsMissedWhenItCannotBeStartedForAWindow) {
  startReady(kSoon, kSoon);
  awaitEnd();
  hosts_.refuse("no such program");
  openWindow();
  EXPECT_THAT(controller_->calls, Contains(HasSubstr("no such program")));
}

TEST_F(HelperAtRest, DoesNotEndOnceItIsGreeted) {
  startReady(kSoon, std::chrono::milliseconds(20));
  awaitRest();
  client_->prepare();
  EXPECT_FALSE(wakes());
  EXPECT_FALSE(hosts_.last().sawEnd());
}

TEST_F(HelperAtRest, EndsWithTheGame) {
  startReady(kSoon, kNever);
  awaitRest();
  client_.reset();
  EXPECT_TRUE(hosts_.last().sawEnd());
}

TEST_F(HelperAtRest, IsStartedAnewWhenSomethingMayBeShown) {
  startReady(kSoon, kSoon);
  awaitEnd();
  client_->prepare();
  EXPECT_EQ(hosts_.count(), 3U);
  EXPECT_THAT(commands(), ElementsAre(HasSubstr("hello")));
}

TEST_F(HelperAtRest, IsStartedAnewForTheNextWindow) {
  startReady(kSoon, kSoon);
  awaitEnd();
  openWindow();
  EXPECT_EQ(hosts_.count(), 3U);
  EXPECT_THAT(controller_->calls, Not(Contains(HasSubstr("failed"))));
  EXPECT_THAT(commands(), Contains(HasSubstr("window.create")));
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
