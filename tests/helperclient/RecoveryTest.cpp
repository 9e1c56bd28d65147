#include <algorithm>

#include <sys/timerfd.h>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class HelperRecovery : public ClientOfTheHelper {
 protected:
  void openWindow() {
    makeWindow();
    pump();
    controller_->calls.clear();
    commands();
  }
  std::size_t failures() const {
    return static_cast<std::size_t>(
        std::count_if(controller_->calls.begin(), controller_->calls.end(),
                      [](const std::string& call) { return call.starts_with("failed: "); }));
  }
};

TEST_F(HelperRecovery, ANewHelperIsGivenWhatWasOnScreen) {
  startReady();
  openWindow();                                                    // window 1, view 2
  const auto layout = client_->loadLayout("/bundle", "Main", {});  // layout 3, view 4
  const auto content = layout->outlet("contentView");              // view 5
  const auto page = client_->makeWebView({});                      // view 6
  window_->makeKeyAndVisible();
  controller_->view->addSubview(*layout->root());
  layout->root()->pinEdgesTo(*controller_->view);
  content->addSubview(*page);
  content->sendSubviewToBack(*page);
  content->setHidden(true);
  content->setHidden(false);
  page->loadFile("file:///p.html", "file:///p.html");
  receive(R"({"type":"web.url","view":6,"url":"file:///p.html?a#b"})");

  killHelper();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("starting it again")));
  std::vector<std::string> replayed = commands();
  ASSERT_FALSE(replayed.empty());
  EXPECT_THAT(replayed.front(), HasSubstr("hello"));
  replayed.erase(replayed.begin());
  EXPECT_THAT(
      replayed,
      ElementsAre(R"({"type":"window.create","window":1,"view":2,"frame":[0E0,0E0,0E0,0E0]})",
                  R"({"type":"layout.load","layout":3,"view":4,"bundle":"/bundle","name":"Main"})",
                  R"({"type":"layout.outlet","layout":3,"view":5,"name":"contentView"})",
                  HasSubstr(R"({"type":"web.create","view":6,)"),
                  R"({"type":"view.add","view":2,"child":4})",
                  R"({"type":"view.pinEdges","view":4,"to":2})",
                  R"({"type":"view.add","view":5,"child":6})",
                  R"({"type":"view.back","view":5,"child":6})",
                  R"({"type":"view.hidden","view":5,"hidden":false})",
                  R"({"type":"web.loadFile","view":6,"url":"file:///p.html?a#b",)"
                  R"("readAccess":"file:///p.html"})",
                  R"({"type":"window.show","window":1})"));
  EXPECT_THAT(controller_->calls, IsEmpty()) << "the controller goes on";
}

TEST_F(HelperRecovery, ANewHelperIsToldThatDrawingMayHaveFailed) {
  startReady();
  killHelper();
  EXPECT_THAT(commands(), Contains(HasSubstr(R"("drawingFailed":true)")));
}

TEST_F(HelperRecovery, WhatWasDroppedOrTakenOutDoesNotComeBack) {
  startReady();
  auto first = client_->loadLayout("/bundle", "Main", {});
  const auto second = client_->loadLayout("/bundle", "Main", {});
  const auto page = client_->makeWebView({});
  first->root()->addSubview(*page);
  page->pinEdgesTo(*first->root());
  page->removeFromSuperview();
  first.reset();
  second->root()->addSubview(*page);
  killHelper();
  auto replayed = commands();
  ASSERT_EQ(replayed.size(), 4U);
  EXPECT_THAT(replayed[1], HasSubstr(R"("layout":3)"));
  EXPECT_THAT(replayed[2], HasSubstr("web.create"));
  EXPECT_EQ(replayed[3], R"({"type":"view.add","view":4,"child":5})");
}

TEST_F(HelperRecovery, APageThatWasNotHeardOfIsLoadedFromTheAddressThatWasAskedFor) {
  startReady();
  const auto page = client_->makeWebView({});
  page->loadFile("file:///old.html", "file:///old.html");
  page->load("https://a/?x=1");
  killHelper();
  EXPECT_THAT(hosts_.last().messages("web.loadFile"), IsEmpty());
  killHelper();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("again"), HasSubstr("giving up")));
}

TEST_F(HelperRecovery, APageOnTheNetIsLoadedFromWhereItStands) {
  startReady();
  const auto page = client_->makeWebView({});
  page->load("https://a/");
  receive(R"({"type":"web.url","view":1,"url":"https://a/next"})");
  killHelper();
  const auto loads = hosts_.last().messages("web.load");
  ASSERT_EQ(loads.size(), 1U);
  EXPECT_EQ(loads[0].at("url"), "https://a/next");
  EXPECT_EQ(page->url(), "https://a/next");
}

TEST_F(HelperRecovery, WhoeverWaitsForALostHelperIsAnswered) {
  startReady();
  openWindow();
  window_->makeKeyAndVisible();
  const auto page = client_->makeWebView({});
  std::vector<std::string> answers;
  page->evaluateJavaScript("1", [&](const ScriptResult& result) {
    answers.push_back(result.error ? "script error" : "script value");
  });
  client_->openUrl("http://a/",
                   [&](bool opened) { answers.push_back(opened ? "opened" : "not opened"); });
  client_->sync([&](bool done) { answers.push_back(done ? "synced" : "not synced"); });
  killHelper();
  EXPECT_THAT(answers, ElementsAre("script error", "not opened", "not synced"));
}

TEST_F(HelperRecovery, ASecondLossEndsTheRunOfEveryWindowFromThePump) {
  startReady();
  openWindow();
  const auto other = std::make_shared<RecordingController>();
  const auto otherWindow = client_->makeWindow({});
  otherWindow->setRootViewController(other);
  pump();
  killHelper();
  hosts_.last().becomeReady();
  pump();
  EXPECT_EQ(failures(), 0U);
  hosts_.last().die();
  window_->makeKeyAndVisible();
  EXPECT_EQ(failures(), 0U) << "never from a command";
  pump();
  EXPECT_THAT(controller_->calls, ElementsAre("failed: The helper cannot be used: it closed its "
                                              "connection"));
  EXPECT_THAT(other->calls.back(), HasSubstr("failed: "));
  EXPECT_EQ(takeLines().size(), 2U) << "one line for each loss";
  EXPECT_EQ(hosts_.count(), 2U);
  pump();
  EXPECT_EQ(failures(), 1U);
}

TEST_F(HelperRecovery, WithoutAHelperEveryQuestionIsAnsweredFromThePump) {
  startReady();
  killHelper();
  killHelper();
  const auto page = client_->makeWebView({});
  std::vector<std::string> answers;
  page->evaluateJavaScript("1", [&](const ScriptResult& r) { answers.push_back(*r.error); });
  client_->openUrl("http://a/", [&](bool opened) { answers.push_back(opened ? "yes" : "no"); });
  EXPECT_THAT(answers, IsEmpty());
  pump();
  EXPECT_EQ(answers.size(), 2U);
  EXPECT_EQ(client_->helperProcessId(), 0);
}

TEST_F(HelperRecovery, ANewRootOnAWindowWithoutAHelperIsToldTooFromThePump) {
  startReady();
  openWindow();
  killHelper();
  killHelper();
  ASSERT_EQ(failures(), 1U);
  const auto next = std::make_shared<RecordingController>();
  window_->setRootViewController(next);
  EXPECT_THAT(next->calls, ElementsAre("loadView"));
  pump();
  EXPECT_THAT(next->calls, testing::Contains(HasSubstr("failed: ")));
}

TEST_F(HelperRecovery, TheNextWindowAfterAFailureTriesOnceMore) {
  startReady();
  openWindow();
  killHelper();
  killHelper();
  window_ = client_->makeWindow({});
  ASSERT_EQ(hosts_.count(), 3U);
  const auto sent = hosts_.last().messages();
  ASSERT_GE(sent.size(), 3U);
  EXPECT_EQ(sent[0].at("type"), "hello");
  EXPECT_EQ(sent[1].at("window"), 1) << "the window that was there";
  EXPECT_EQ(sent[2].at("type"), "window.create");
  window_->setRootViewController(controller_);
  pump();
  controller_->calls.clear();
  killHelper();
  EXPECT_EQ(failures(), 0U) << "it has a second chance of its own";
  EXPECT_EQ(hosts_.count(), 4U);
  killHelper();
  EXPECT_EQ(failures(), 1U);
}

TEST_F(HelperRecovery, ARunThatEndsWellGivesTheSecondChanceBack) {
  startReady();
  killHelper();
  openWindow();
  window_.reset();
  EXPECT_EQ(hosts_.count(), 2U);
  hosts_.last().becomeReady();
  pump();
  openWindow();
  window_.reset();
  openWindow();
  killHelper();
  EXPECT_EQ(hosts_.count(), 3U);
  EXPECT_EQ(failures(), 0U);
}

TEST_F(HelperRecovery, AWindowClosedBeforeTheHelperWasReadyGivesNothingBack) {
  startReady();
  killHelper();
  openWindow();
  window_.reset();
  openWindow();
  killHelper();
  EXPECT_EQ(failures(), 1U);
}

TEST_F(HelperRecovery, AHelperThatCannotBeStartedIsALossToo) {
  hosts_.refuse("no such program");
  start();
  EXPECT_THAT(lines_, IsEmpty()) << "only from the pump";
  makeWindow();
  pump();
  EXPECT_EQ(failures(), 1U);
  EXPECT_THAT(takeLines(), ElementsAre("[Error] Helper lost (no such program), starting it again",
                                       "[Error] Helper lost (no such program), giving up"));
}

TEST_F(HelperRecovery, AHelperThatDoesNotBecomeReadyInTimeIsLost) {
  HelperLauncher launcher = hosts_.launcher();
  launcher.readyTimeout = std::chrono::milliseconds(1);
  start(launcher);
  makeWindow();
  pumpUntil("the failure", [&] { return failures() == 1; });
  EXPECT_THAT(controller_->calls.back(), HasSubstr("did not become ready in time"));
  EXPECT_EQ(hosts_.count(), 2U);
}

/// Returns after the helper's time, because another timer that was set later runs for longer.
void waitPastReadyTimeout() {
  const UniqueFd timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
  const itimerspec later{{0, 0}, {0, 5000000}};
  ASSERT_EQ(::timerfd_settime(timer.get(), 0, &later, nullptr), 0);
  pollfd ended{timer.get(), POLLIN, 0};
  ASSERT_EQ(::poll(&ended, 1, 10000), 1);
}

TEST_F(HelperRecovery, AHelperIsNotLostBecauseTheGameDidNotPump) {
  HelperLauncher launcher = hosts_.launcher();
  launcher.readyTimeout = std::chrono::milliseconds(1);
  start(launcher);
  hosts_.last().becomeReady();
  waitPastReadyTimeout();
  pump();
  EXPECT_EQ(hosts_.count(), 1U);
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperRecovery, AReadyHelperHasAllTheTimeItWants) {
  HelperLauncher launcher = hosts_.launcher();
  launcher.readyTimeout = std::chrono::milliseconds(1);
  start(launcher);
  hosts_.last().becomeReady();
  pump();
  waitPastReadyTimeout();
  pollfd quiet{queue_.pollDescriptor(), POLLIN, 0};
  EXPECT_EQ(::poll(&quiet, 1, 0), 0) << "no timer is left";
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperRecovery, AHelperThatSaysItFailedIsLostForItsReason) {
  startReady();
  openWindow();
  receive(R"({"type":"failed","reason":"no display"})");
  ASSERT_EQ(hosts_.count(), 2U);
  receive(R"({"type":"failed","reason":"no display"})");
  EXPECT_THAT(controller_->calls, ElementsAre("failed: The helper cannot be used: no display"));
}

TEST_F(HelperRecovery, TheReasonIsHeardEvenWhenTheHelperEndsAtOnce) {
  startReady();
  hosts_.last().send(R"({"type":"failed","reason":"no display"})");
  killHelper();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("(no display)")));
}

TEST_F(HelperRecovery, AHelperOfAnotherVersionIsLost) {
  start();
  receive(R"({"type":"ready","version":2,"screen":[0,0,1,1],"schemes":[]})");
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("speaks version 2")));
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_EQ(client_->mainScreenBounds(), Rect{});
}

class BrokenHelperStream : public HelperRecovery,
                           public testing::WithParamInterface<std::string> {};

TEST_P(BrokenHelperStream, CountsAsALoss) {
  startReady();
  hosts_.last().sendBytes(GetParam());
  FakeHelper& broken = hosts_.last();
  pump();
  EXPECT_EQ(hosts_.count(), 2U);
  EXPECT_EQ(takeLines().size(), 1U);
  EXPECT_TRUE(broken.sawEnd());
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, BrokenHelperStream,
                         testing::Values(std::string("\0\0\0\0", 4),
                                         std::string("\xff\xff\xff\xff"),
                                         std::string("\x02\0\0\0[]", 6),
                                         std::string("\x02\0\0\0{}", 6),
                                         std::string("\x03\0\0\0abc", 7)));

TEST_F(HelperRecovery, AControllerMayDropItsWindowAndOpenAnotherWhenTold) {
  startReady();
  openWindow();
  killHelper();
  std::shared_ptr<Window> next;
  controller_->whenFailed = [&] {
    window_.reset();
    next = client_->makeWindow({});
  };
  killHelper();
  EXPECT_EQ(hosts_.count(), 3U);
  next.reset();
  EXPECT_TRUE(client_->isEmpty());
}

TEST_F(HelperRecovery, WhoIsAnsweredMayShutEverythingDown) {
  startReady();
  openWindow();
  const auto page = client_->makeWebView({});
  int answers = 0;
  for (int i = 0; i < 2; ++i) {
    page->evaluateJavaScript("1", [&](const ScriptResult&) {
      ++answers;
      client_->shutDown();
    });
  }
  killHelper();
  EXPECT_EQ(answers, 1) << "nothing is called back after the shutdown";
}

TEST_F(HelperRecovery, AWindowThatDoesNotComeUpIsTriedOnTheOtherDisplaySystem) {
  startReady();
  openWindow();
  window_->makeKeyAndVisible();
  receive(R"({"type":"window.stuck","window":1,"display":"wayland"})");
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("does not come up on wayland")));
  ASSERT_EQ(hosts_.count(), 2U);
  const auto replayed = hosts_.last().messages();
  ASSERT_FALSE(replayed.empty());
  EXPECT_EQ(replayed.front().at("display"), "x11");
  EXPECT_EQ(replayed.back().at("type"), "window.show");
  EXPECT_EQ(failures(), 0U);
}

TEST_F(HelperRecovery, AWindowThatComesUpNowhereEndsTheRunAndTheNextBeginsAnew) {
  startReady();
  openWindow();
  window_->makeKeyAndVisible();
  receive(R"({"type":"window.stuck","window":1,"display":"x11"})");
  hosts_.last().becomeReady();
  pump();
  receive(R"({"type":"window.stuck","window":1,"display":"wayland"})");
  EXPECT_EQ(failures(), 1U);
  EXPECT_THAT(controller_->calls.back(), HasSubstr("does not come up on wayland"));
  window_.reset();
  window_ = client_->makeWindow({});
  ASSERT_EQ(hosts_.count(), 3U);
  EXPECT_FALSE(hosts_.last().messages("hello").front().contains("display"));
}

TEST_F(HelperRecovery, AStuckWindowThatIsClosedByThenCountsForNothing) {
  startReady();
  openWindow();
  window_.reset();
  receive(R"({"type":"window.stuck","window":1,"display":"x11"})");
  EXPECT_EQ(hosts_.count(), 1U);
}

}  // namespace
}  // namespace zovk
