#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string sizeEvent(const std::string& size) {
  return R"({"type":"window.size","window":1,)" + size + R"(,"safeArea":[0,0,0,0]})";
}
const std::string kPortrait = sizeEvent(R"("width":400,"height":700)");
const std::string kLandscape = sizeEvent(R"("width":700,"height":400)");

class HelperWindows : public ClientOfTheHelper {
 protected:
  /// A window with a root controller that has settled.
  void open(const Rect& frame) {
    makeWindow(frame);
    pump();
    controller_->calls.clear();
    commands();
  }
  HelperId syncNumber() {
    const auto syncs = hosts_.last().messages("sync");
    return syncs.size() == 1 ? syncs[0].at("id").as_int64() : 0;
  }
};

TEST_F(HelperWindows, TheRootControllerLoadsItsViewAtOnceAndUpdatesConstraintsFromThePump) {
  startReady();
  window_ = client_->makeWindow({});
  window_->setRootViewController(controller_);
  EXPECT_THAT(controller_->calls, ElementsAre("loadView"));
  EXPECT_NE(controller_->view, nullptr);
  pump();
  EXPECT_THAT(controller_->calls, ElementsAre("loadView", "updateViewConstraints"));
}

TEST_F(HelperWindows, ReplacingTheRootControllerTearsTheOldOneDownFirst) {
  startReady();
  open({});
  const auto next = std::make_shared<RecordingController>();
  window_->setRootViewController(next);
  EXPECT_THAT(controller_->calls, ElementsAre("tearDown"));
  EXPECT_EQ(controller_.use_count(), 1);
  EXPECT_THAT(next->calls, ElementsAre("loadView"));
  window_.reset();
  EXPECT_THAT(next->calls, ElementsAre("loadView", "tearDown"));
  EXPECT_EQ(next.use_count(), 1);
}

TEST_F(HelperWindows, ManyRequestsForConstraintsAreOneUpdate) {
  startReady();
  open({});
  for (int i = 0; i < 5; ++i) window_->setNeedsUpdateConstraints();
  EXPECT_THAT(controller_->calls, IsEmpty());
  pump();
  EXPECT_THAT(controller_->calls, ElementsAre("updateViewConstraints"));
  window_->setNeedsUpdateConstraints();
  pump();
  EXPECT_EQ(controller_->calls.size(), 2U);
}

TEST_F(HelperWindows, TurningTheWindowRunsATransitionThatEndsWhenItIsPainted) {
  startReady();
  open({0, 0, 400, 700});
  receive(kLandscape);
  EXPECT_THAT(controller_->calls, ElementsAre("transition 700x400", "alongside"));
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kLandscapeLeft);
  const HelperId sync = syncNumber();
  receive(fmt::format(R"({{"type":"synced","id":{}}})", sync));
  EXPECT_THAT(controller_->calls, ElementsAre("transition 700x400", "alongside", "completion"));
  receive(fmt::format(R"({{"type":"synced","id":{}}})", sync));
  EXPECT_EQ(controller_->calls.size(), 3U);
}

TEST_F(HelperWindows, ShapesThatComeDuringATurnWaitForItsEndAndTheLastCounts) {
  startReady();
  open({0, 0, 400, 700});
  receive(kLandscape);
  receive(kPortrait);
  receive(kLandscape);
  EXPECT_THAT(controller_->calls, ElementsAre("transition 700x400", "alongside"));
  receive(kPortrait);
  receive(fmt::format(R"({{"type":"synced","id":{}}})", syncNumber()));
  EXPECT_THAT(controller_->calls, ElementsAre("transition 700x400", "alongside", "completion",
                                              "transition 400x700", "alongside"));
  receive(kLandscape);
  receive(kPortrait);
  receive(fmt::format(R"({{"type":"synced","id":{}}})", syncNumber()));
  EXPECT_EQ(controller_->calls.back(), "completion");
  EXPECT_EQ(controller_->calls.size(), 6U);
}

TEST_F(HelperWindows, AnotherSizeOfTheSameShapeIsNoTransition) {
  startReady();
  open({0, 0, 400, 700});
  receive(kPortrait);
  receive(sizeEvent(R"("width":300,"height":301)"));
  EXPECT_THAT(controller_->calls, IsEmpty());
}

TEST_F(HelperWindows, AWindowThatGoesEndsItsTransition) {
  startReady();
  open({0, 0, 400, 700});
  receive(kLandscape);
  window_.reset();
  EXPECT_THAT(controller_->calls, ElementsAre("transition 700x400", "alongside", "tearDown"));
  pump();
  EXPECT_EQ(controller_->calls.back(), "completion");
  EXPECT_TRUE(client_->isEmpty());
}

TEST_F(HelperWindows, AHelperThatGoesEndsTheTransition) {
  startReady();
  open({0, 0, 400, 700});
  receive(kLandscape);
  killHelper();
  EXPECT_EQ(controller_->calls.back(), "completion");
}

TEST_F(HelperWindows, TheFrameTellsTheOrientationBeforeTheHelperDoes) {
  start();
  window_ = client_->makeWindow({0, 0, 400, 700});
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kPortrait);
  window_ = client_->makeWindow({0, 0, 700, 400});
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kLandscapeLeft);
}

TEST_F(HelperWindows, TheScreenTellsTheOrientationOfAFullWindow) {
  startReady();
  receive(R"({"type":"screen","screen":[0,0,600,900]})");
  EXPECT_EQ(client_->mainScreenBounds(), (Rect{0, 0, 600, 900}));
  window_ = client_->makeWindow({});
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kPortrait);
}

TEST_F(HelperWindows, AShapeThatWasNotKnownInTimeIsMadeGoodOnlyWhenItIsPortrait) {
  start();
  open({});
  EXPECT_EQ(device_.statusBarOrientation(), Orientation::kUnknown);
  receive(kLandscape);
  EXPECT_THAT(controller_->calls, IsEmpty());
  receive(kPortrait);
  EXPECT_THAT(controller_->calls, ElementsAre("transition 400x700", "alongside"));
}

TEST_F(HelperWindows, TheKeyWindowIsWhicheverBecameActiveLast) {
  startReady();
  open({});
  EXPECT_FALSE(window_->isKeyWindow());
  receive(R"({"type":"window.key","window":1,"key":true})");
  EXPECT_TRUE(window_->isKeyWindow());
  receive(R"({"type":"window.key","window":1,"key":false})");
  EXPECT_TRUE(window_->isKeyWindow()) << "another program took the keyboard";
  receive(R"({"type":"window.other"})");
  EXPECT_FALSE(window_->isKeyWindow());
  receive(R"({"type":"window.key","window":1,"key":true})");
  client_->gameWindowDidBecomeKey();
  EXPECT_FALSE(window_->isKeyWindow());
}

// The game tells of its window by another way than the helper does, so the order says nothing.
TEST_F(HelperWindows, AGameWindowThatLostTheKeyboardLeavesItToThePopupThatHasIt) {
  startReady();
  open({});
  client_->gameWindowDidResignKey();
  EXPECT_FALSE(window_->isKeyWindow()) << "another program has it";
  receive(R"({"type":"window.key","window":1,"key":true})");
  client_->gameWindowDidBecomeKey();
  client_->gameWindowDidResignKey();
  EXPECT_TRUE(window_->isKeyWindow());
  client_->gameWindowDidBecomeKey();
  receive(R"({"type":"window.key","window":1,"key":false})");
  client_->gameWindowDidResignKey();
  EXPECT_FALSE(window_->isKeyWindow());
}

TEST_F(HelperWindows, SomeProgramOpensTheSchemesThatWereHeardInAnyCase) {
  start();
  EXPECT_FALSE(client_->canOpenUrl("http://a/"));
  hosts_.last().becomeReady();
  pump();
  EXPECT_TRUE(client_->canOpenUrl("HTTP://a/"));
  EXPECT_TRUE(client_->canOpenUrl("mailto:a@b"));
  EXPECT_FALSE(client_->canOpenUrl("game:x"));
  EXPECT_FALSE(client_->canOpenUrl("http"));
}

TEST_F(HelperWindows, AThousandWindowsLeaveNothingBehind) {
  startReady();
  for (int i = 0; i < 1000; ++i) {
    open({});
    {
      const auto layout = client_->loadLayout("/bundle", "Main", {});
      const auto page = client_->makeWebView({});
      controller_->view->addSubview(*layout->root());
      layout->outlet("contentView")->addSubview(*page);
      page->load("https://a/");
      window_->makeKeyAndVisible();
      page->evaluateJavaScript("1", [](const ScriptResult&) {});
    }
    window_.reset();
    pump();
    ASSERT_TRUE(client_->isEmpty()) << "after window " << i;
  }
  EXPECT_EQ(hosts_.count(), 1U);
}

TEST_F(HelperWindows, TheFrontWindowIsLookedAtByTools) {
  startReady();
  open({});
  const auto layout = client_->loadLayout("/bundle", "Main", {});
  layout->outlet("crossBtn");
  window_->makeKeyAndVisible();
  EXPECT_FALSE(client_->viewFrame("crossBtn"));
  const HelperId view = hosts_.last().messages("layout.outlet").at(0).at("view").as_int64();
  receive(fmt::format(
      R"({{"type":"view.frame","view":{},"window":1,"frame":[1,2,3,4],"visible":true}})", view));
  const auto place = client_->viewFrame("crossBtn");
  ASSERT_TRUE(place);
  EXPECT_EQ(place->frame, (Rect{1, 2, 3, 4}));
  EXPECT_TRUE(place->visible);
}

TEST_F(HelperWindows, SnapshotsAndSyncsAreAnsweredAlsoWithoutAWindow) {
  startReady();
  std::vector<bool> answers;
  const auto note = [&](bool done) { answers.push_back(done); };
  client_->snapshot(nullptr, "/none.png", note);
  client_->sync(note);
  EXPECT_THAT(answers, IsEmpty());
  pump();
  EXPECT_THAT(answers, ElementsAre(false, false));
  open({});
  window_->makeKeyAndVisible();
  client_->snapshot(window_.get(), "/one.png", note);
  const HelperId id = hosts_.last().messages("snapshot").at(0).at("id").as_int64();
  receive(fmt::format(R"({{"type":"snapshot.done","id":{},"done":true}})", id));
  client_->sync(note);
  receive(fmt::format(R"({{"type":"synced","id":{}}})", syncNumber()));
  EXPECT_THAT(answers, ElementsAre(false, false, true, true));
}

}  // namespace
}  // namespace zovk
