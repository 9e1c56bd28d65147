#include <thread>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

// The queue is found empty on a thread other than the main one. Window and timer are the main
// thread's.
class EmptyQueue : public EngineFixture {
 protected:
  EmptyQueue() {
    engine().setMergePopupArr(listOf({webPage("lobby")}));
    engine().initPopupWindow();
    engine().startCheckKeyWindow();
    log().clear();
  }
  void showOnAnotherThread() {
    std::thread([this] { engine().showPopup(); }).join();
  }
};

TEST_F(EmptyQueue, FoundOnAnotherThreadEndsWindowAndTimerOnTheMainQueue) {
  const auto timer = engine().timer();
  showOnAnotherThread();
  EXPECT_NE(engine().window(), nullptr);
  EXPECT_NE(engine().timer(), nullptr);
  EXPECT_TRUE(timer->isValid());
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Show Popup", "Get Popup from cache", "No Popup to show"));
  log().clear();
  settle();
  EXPECT_EQ(engine().window(), nullptr);
  EXPECT_EQ(engine().timer(), nullptr);
  EXPECT_FALSE(timer->isValid());
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
  EXPECT_THAT(debugMessages(log()), ElementsAre("Stop check key window", "Release Popup window"));
}

TEST_F(EmptyQueue, IsNotLookedAtWhenPopupsAreNoLongerHeldBack) {
  engine().setHeldBack(true);
  engine().setHeldBack(false);
  EXPECT_THAT(debugMessages(log()), ElementsAre("Hold Popups back:1", "Hold Popups back:0"));
}

TEST_F(EmptyQueue, FoundOnAnotherThreadLeavesTheWindowToARequestThatCameMeanwhile) {
  const auto* const window = engine().window().get();
  showOnAnotherThread();
  engine().showPopup("lobby", 0, recordAnswer());
  settle();
  EXPECT_EQ(engine().window().get(), window);
  ASSERT_NE(page(), nullptr);
  EXPECT_EQ(page()->lastLoad(), webPage("lobby").uri);
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_EQ(memory().userInterface.windowsMade(), 1U);
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

}  // namespace
}  // namespace zovk
