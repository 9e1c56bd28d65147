#include "fixtures/EngineFixture.h"
#include "fixtures/LineWatch.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

// A page has reported: what comes before the host's callback, and what after it.
class DisplayEnd : public EngineFixture {
 protected:
  DisplayEnd() { engine().setMergePopupArr(listOf({webPage("first"), webPage("second")})); }
  void show(const ZOVKPopupComplete& complete) {
    engine().showPopup("first", 0, complete);
    settle();
    log().clear();
  }
};

TEST_F(DisplayEnd, TheHostHearsWhileTheEntryIsQueuedAndHoldsTheScreen) {
  std::size_t queued = 0;
  bool showing = false;
  std::vector<std::string> lines;
  show([&](std::int32_t, const std::string&) {
    queued = engine().popupCache().size();
    showing = engine().isPopuping() && engine().window() != nullptr && engine().timer() != nullptr;
    lines = debugMessages(log());
  });
  choose("skip");
  EXPECT_EQ(queued, 1U);
  EXPECT_TRUE(showing);
  EXPECT_THAT(lines, ElementsAre("Show Popup done", "Do callback"));
}

TEST_F(DisplayEnd, TheQueueGoesOnOnceTheEntryIsGoneAndTheScreenFree) {
  std::size_t queued = 9;
  bool showing = true;
  show(nullptr);
  {
    const LineWatch looked(memory(), "Get Popup from cache", [&] {
      queued = engine().popupCache().size();
      showing = engine().isPopuping();
    });
    choose("skip");
  }
  EXPECT_EQ(queued, 0U);
  EXPECT_FALSE(showing);
}

TEST_F(DisplayEnd, ARequestFromTheCallbackWaitsForTheEntryToEnd) {
  show([this](std::int32_t, const std::string&) { engine().showPopup("second", 0, nullptr); });
  choose("skip");
  EXPECT_THAT(
      debugMessages(log()),
      ElementsAre("Show Popup done", "Do callback",
                  "Show Popup, scene:second, sceneType:0, complete:(nil)",
                  "Get valid Popup, scene:second, srcPopups count:2", "Scene not same",
                  "Content type remote", "Cache Popup, Popup count:1, complete:(nil)",
                  "complete is NULL", "Cache callback done", "Show Popup", "Get Popup from cache",
                  "Be Popuping now, waiting for last Popup finish", "Show Popup",
                  "Get Popup from cache", "Start show Popup", "Start check key window"));
  EXPECT_EQ(page()->lastLoad(), webPage("second").uri);
}

TEST_F(DisplayEnd, AnEntryThatWaitsIsTakenUpByTheEndOfTheOneBeforeItOnly) {
  show(nullptr);
  engine().showPopup("second", 0, nullptr);
  log().clear();
  settle();
  EXPECT_TRUE(debugMessages(log()).empty()) << "nothing looks at the queue meanwhile";
}

}  // namespace
}  // namespace zovk
