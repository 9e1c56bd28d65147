#include "fixtures/EngineFixture.h"

namespace zovk {
namespace {

class DisplayEndurance : public EngineFixture {
 protected:
  void expectNothingLeft() {
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
    EXPECT_EQ(memory().userInterface.liveLayouts(), 0U);
    EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
    EXPECT_EQ(memory().scheduler.pendingTaskCount(), 0U);
    EXPECT_TRUE(engine().popupCache().empty());
    EXPECT_FALSE(engine().isPopuping());
    EXPECT_EQ(engine().window(), nullptr);
  }
};

TEST_F(DisplayEndurance, AThousandRunsLeaveNothingBehind) {
  engine().setMergePopupArr(listOf({pageFile("lobby")}));
  std::size_t toldCount = 0;
  for (int run = 0; run < 1000; ++run) {
    engine().showPopup("lobby", 0, [&toldCount](std::int32_t, const std::string&) { ++toldCount; });
    settle();
    memory().scheduler.advance(std::chrono::milliseconds(100));
    choose(run % 2 == 0 ? "skip" : "cancel");
    log().clear();
  }
  EXPECT_EQ(toldCount, 1000U);
  EXPECT_EQ(memory().userInterface.windowsMade(), 1000U);
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1000U);
  expectNothingLeft();
}

TEST_F(DisplayEndurance, AThousandWaitingRequestsAreShownInOneWindowAndLeaveNothingBehind) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  std::vector<int> told;
  for (int run = 0; run < 1000; ++run) {
    engine().showPopup("lobby", 0,
                       [&told, run](std::int32_t, const std::string&) { told.push_back(run); });
  }
  settle();
  for (int run = 0; run < 1000; ++run) {
    choose("skip");
    log().clear();
  }
  ASSERT_EQ(told.size(), 1000U);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_EQ(memory().userInterface.windowsMade(), 1U);
  expectNothingLeft();
}

TEST_F(DisplayEndurance, RunsWithRotationConditionAndReportLeaveNothingBehind) {
  engine().setMergePopupArr(listOf({conditional("asked")}));
  memory().urlSession.setHandler([](const MemoryRequest&) -> std::optional<MemoryAnswer> {
    return MemoryAnswer{200, R"({"need_popup":1,"extra":{"a":"b"}})", std::nullopt, ""};
  });
  for (int run = 0; run < 100; ++run) {
    engine().showPopup("asked", 0, recordAnswer());
    settle();
    memory().userInterface.frontWindow()->resize({1920, 1080});
    settle();
    choose("commit");
    log().clear();
  }
  expectNothingLeft();
}

}  // namespace
}  // namespace zovk
