#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

class DisplayCallback : public EngineFixture {
 protected:
  DisplayCallback() {
    engine();
    log().clear();
  }
  CallbackPointer recorded() { return std::make_shared<const ZOVKPopupComplete>(recordAnswer()); }
  void showWithoutReportAddress() {
    engine().setMergePopupArr(listOf({webPage("lobby")}));
    engine().showPopup("lobby", 0, recordAnswer());
    settle();
  }
};

TEST_F(DisplayCallback, NoneIsPassedOverWithoutALogLine) {
  engine().doCallback(nullptr, 0, "text");
  engine().doCallback(nullptr, -1, "");
  settle();
  EXPECT_TRUE(log().lines().empty());
}

TEST_F(DisplayCallback, GetsAResultAtOnceAndUnchanged) {
  for (const std::int32_t code : {-1, 0, 1, 2}) engine().doCallback(recorded(), code, "text");
  for (const std::int32_t code : {0, 1, 2}) engine().doCallback(recorded(), code, "");
  EXPECT_EQ(answers(),
            (std::vector<Answer>{
                {-1, "text"}, {0, "text"}, {1, "text"}, {2, "text"}, {0, ""}, {1, ""}, {2, ""}}));
  EXPECT_THAT(debugMessages(log()), Contains("Do callback").Times(7));
}

TEST_F(DisplayCallback, GetsAnErrorWithoutAMessageLaterAndAsASkip) {
  engine().doCallback(recorded(), -1, "");
  EXPECT_TRUE(answers().empty());
  EXPECT_THAT(debugMessages(log()), ElementsAre("Do callback"));
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_THAT(debugMessages(log()), ElementsAre("Do callback", "Do callback"));
}

TEST_F(DisplayCallback, OfACommitWithoutReportAddressComesFromTheMainQueueAsASkip) {
  showWithoutReportAddress();
  post("commit");
  EXPECT_TRUE(answers().empty());
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U) << "the entry has reported";
}

TEST_F(DisplayCallback, OfAPageErrorWithAMessageComesAtOnceAndUnchanged) {
  showWithoutReportAddress();
  memory().userInterface.failInterface("the helper is gone");
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "the helper is gone"}}));
}

TEST_F(DisplayCallback, ComesFromWithinThePagesMessage) {
  showWithoutReportAddress();
  post("cancel", "no");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel", "no")}}));
}

}  // namespace
}  // namespace zovk
