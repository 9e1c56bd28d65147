#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

class DisplayQueue : public EngineFixture {
 protected:
  DisplayQueue() { engine().setMergePopupArr(listOf({webPage("first"), webPage("second")})); }

  CallbackPointer recorded() { return std::make_shared<const ZOVKPopupComplete>(recordAnswer()); }
};

TEST_F(DisplayQueue, TwoRequestsInQuickSuccessionAreShownOneAfterTheOther) {
  engine().showPopup("first", 0, recordAnswer());
  EXPECT_THAT(debugMessages(log()),
              Not(Contains("Be Popuping now, waiting for last Popup finish")));
  engine().showPopup("second", 0, recordAnswer());
  EXPECT_THAT(debugMessages(log()), Contains("Be Popuping now, waiting for last Popup finish"));
  EXPECT_EQ(engine().popupCache().size(), 2U);
  settle();
  EXPECT_EQ(page()->loads().size(), 1U);
  EXPECT_EQ(page()->lastLoad(), webPage("first").uri);
  choose("skip", "one");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "one")}}));
  EXPECT_EQ(page()->lastLoad(), webPage("second").uri);
  choose("cancel", "two");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "one")},
                                            {2, resultText("cancel", "two")}}));
}

TEST_F(DisplayQueue, WindowAndTimerSurviveFromEntryToEntryAndEndTogether) {
  engine().showPopup("first", 0, recordAnswer());
  engine().showPopup("second", 0, recordAnswer());
  settle();
  const auto* const window = engine().window().get();
  const auto* const timer = engine().timer().get();
  choose("skip");
  EXPECT_EQ(engine().window().get(), window);
  EXPECT_EQ(engine().timer().get(), timer);
  EXPECT_EQ(memory().userInterface.liveWebViews(), 1U) << "the ended run's page is gone";
  choose("skip");
  EXPECT_EQ(engine().window(), nullptr);
  EXPECT_EQ(engine().timer(), nullptr);
  EXPECT_FALSE(engine().isPopuping());
  EXPECT_TRUE(engine().popupCache().empty());
  EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
  EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
  EXPECT_EQ(memory().userInterface.liveLayouts(), 0U);
}

TEST_F(DisplayQueue, ALaterRequestMakesANewWindow) {
  for (int run = 0; run < 2; ++run) {
    engine().showPopup("first", 0, recordAnswer());
    settle();
    choose("skip");
  }
  EXPECT_EQ(memory().userInterface.windowsMade(), 2U);
}

TEST_F(DisplayQueue, TheScreenStaysTakenUntilThePageReports) {
  engine().showPopup("first", 0, recordAnswer());
  settle();
  memory().scheduler.advance(std::chrono::hours(1));
  EXPECT_TRUE(engine().isPopuping());
  EXPECT_EQ(engine().popupCache().size(), 1U) << "the entry stays queued while it is shown";
}

TEST_F(DisplayQueue, AnEntryWithoutPopupsIsLoggedQueuedAndEndsByItself) {
  engine().cachePopup({}, recorded());
  EXPECT_THAT(errorMessages(log()), Contains("popupArr is NULL or empty"));
  EXPECT_EQ(engine().popupCache().size(), 1U);
  engine().showPopup();
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, ""}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(DisplayQueue, AnEntryWithoutACallbackIsLoggedAndShown) {
  log().clear();
  engine().cachePopup(listOf({webPage("first")}), nullptr);
  EXPECT_THAT(debugMessages(log()), ElementsAre("Cache Popup, Popup count:1, complete:(nil)",
                                                "complete is NULL", "Cache callback done"));
  EXPECT_TRUE(errorMessages(log()).empty());
  engine().showPopup();
  settle();
  choose("skip");
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(DisplayQueue, TheHeadIsTheOldestEntryAndStaysInTheQueue) {
  EXPECT_EQ(engine().getPopupFromCache(), std::nullopt);
  EXPECT_THAT(debugMessages(log()), Contains("Get Popup from cache"));
  const PopupList oldest = listOf({webPage("first")});
  engine().cachePopup(oldest, nullptr);
  engine().cachePopup(listOf({webPage("second")}), nullptr);
  EXPECT_EQ(engine().getPopupFromCache(), (QueueEntry{oldest, nullptr}));
  EXPECT_EQ(engine().getPopupFromCache(), (QueueEntry{oldest, nullptr}));
}

TEST_F(DisplayQueue, EqualEntriesWithoutACallbackEndTogether) {
  engine().showPopup("first", 0, nullptr);
  engine().showPopup("second", 0, recordAnswer());
  engine().showPopup("first", 0, nullptr);
  engine().showPopup("first", 0, recordAnswer());
  settle();
  choose("skip");
  EXPECT_EQ(engine().popupCache().size(), 2U);
  choose("skip", "second");
  EXPECT_EQ(page()->lastLoad(), webPage("first").uri) << "the one with a callback is not equal";
  choose("skip", "last");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "second")},
                                            {0, resultText("skip", "last")}}));
}

TEST_F(DisplayQueue, WithNothingToShowStopsTheCheckAndDropsTheWindow) {
  engine().initPopupWindow();
  engine().startCheckKeyWindow();
  log().clear();
  engine().showPopup();
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Show Popup", "Get Popup from cache", "No Popup to show",
                          "Stop check key window", "Release Popup window"));
  EXPECT_EQ(engine().window(), nullptr);
  EXPECT_EQ(engine().timer(), nullptr);
}

TEST_F(DisplayQueue, AnEntryWhoseEngineIsGoneIsNotAnswered) {
  engine().showPopup("first", 0, recordAnswer());
  settle();
  const auto window = engine().window();  // keeps the page while the engine goes
  engine().stopCheckKeyWindow();
  const auto view = page();
  ZOVKPopupManager::purgeSharedInstance();
  view->postMessage("ZOVKPopup", boost::json::value(resultText("skip")));
  settle();
  EXPECT_TRUE(answers().empty());
}

}  // namespace
}  // namespace zovk
