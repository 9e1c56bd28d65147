#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using std::chrono::milliseconds;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class KeyWindowCheck : public EngineFixture {
 protected:
  KeyWindowCheck() { engine().initPopupWindow(); }
  void start() {
    engine().startCheckKeyWindow();
    settle();
    log().clear();
  }
  std::shared_ptr<MemoryWindow> window() { return memory().userInterface.frontWindow(); }
};

TEST_F(KeyWindowCheck, FiresOnceAtOnce) {
  engine().startCheckKeyWindow();
  EXPECT_EQ(window()->shownCount(), 1);
  settle();
  EXPECT_TRUE(window()->isKeyWindow());
}

TEST_F(KeyWindowCheck, RunsEveryTenthOfASecond) {
  memory().userInterface.grantKeyboard(false);
  start();
  memory().scheduler.advance(milliseconds(99));
  EXPECT_EQ(window()->shownCount(), 1);
  memory().scheduler.advance(milliseconds(1));
  EXPECT_EQ(window()->shownCount(), 2);
  memory().scheduler.advance(milliseconds(900));
  EXPECT_EQ(window()->shownCount(), 11);
  EXPECT_THAT(debugMessages(log()), Contains("Make Popup to key window").Times(10));
}

TEST_F(KeyWindowCheck, DoesNothingAndLogsNothingWhileThePopupIsTheKeyWindow) {
  start();
  memory().scheduler.advance(std::chrono::seconds(2));
  EXPECT_EQ(window()->shownCount(), 1);
  EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(KeyWindowCheck, OverridesAnotherWindowWithinATenthOfASecond) {
  start();
  memory().userInterface.otherWindowTakesKey();
  EXPECT_FALSE(window()->isKeyWindow());
  memory().scheduler.advance(milliseconds(100));
  EXPECT_TRUE(window()->isKeyWindow());
  EXPECT_THAT(debugMessages(log()), ElementsAre("Make Popup to key window"));
}

TEST_F(KeyWindowCheck, IsStartedOnlyOnce) {
  start();
  const auto timer = engine().timer();
  engine().startCheckKeyWindow();
  EXPECT_EQ(engine().timer(), timer);
  EXPECT_EQ(memory().scheduler.activeTimerCount(), 1U);
  EXPECT_EQ(window()->shownCount(), 1);
  EXPECT_THAT(debugMessages(log()), ElementsAre("Start check key window"));
}

TEST_F(KeyWindowCheck, EndsWhenItIsStopped) {
  start();
  const auto timer = engine().timer();
  engine().stopCheckKeyWindow();
  EXPECT_FALSE(timer->isValid());
  EXPECT_EQ(engine().timer(), nullptr);
  EXPECT_THAT(debugMessages(log()), ElementsAre("Stop check key window"));
  memory().userInterface.otherWindowTakesKey();
  memory().scheduler.advance(std::chrono::seconds(1));
  EXPECT_EQ(window()->shownCount(), 1);
}

TEST_F(KeyWindowCheck, MayBeStoppedWhenItDoesNotRun) {
  engine().stopCheckKeyWindow();
  EXPECT_THAT(debugMessages(log()), Contains("Stop check key window"));
}

TEST_F(KeyWindowCheck, RunsFromTheFirstPopupToTheLast) {
  engine().setMergePopupArr(listOf({webPage("a"), webPage("b")}));
  engine().showPopup("", 1, nullptr);
  settle();
  choose("skip");
  memory().userInterface.otherWindowTakesKey();
  memory().scheduler.advance(milliseconds(100));
  EXPECT_TRUE(window()->isKeyWindow());
  choose("skip");
  EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
}

}  // namespace
}  // namespace zovk
