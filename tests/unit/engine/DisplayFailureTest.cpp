#include "fixtures/EngineFixture.h"

namespace zovk {
namespace {

constexpr const char* kReason = "the helper is gone";

// The user interface is lost for good.
class DisplayFailure : public EngineFixture {
 protected:
  DisplayFailure() {
    engine().setMergePopupArr(listOf({webPage("one"), webPage("two"), conditional("asked", 2)}));
  }
  void expectIdle() {
    EXPECT_TRUE(engine().popupCache().empty());
    EXPECT_FALSE(engine().isPopuping());
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_EQ(memory().userInterface.liveWebViews(), 0U);
    EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
  }
};

TEST_F(DisplayFailure, WhileShowingAnswersEveryWaitingCallbackOnceWithTheReason) {
  std::vector<std::string> order;
  for (const char* name : {"a", "b", "c"}) {
    engine().showPopup("one", 0, [&order, name](std::int32_t code, const std::string& message) {
      order.push_back(name + std::to_string(code) + message);
    });
  }
  settle();
  memory().userInterface.failInterface(kReason);
  settle();
  EXPECT_EQ(order,
            (std::vector<std::string>{std::string("a-1") + kReason, std::string("b-1") + kReason,
                                      std::string("c-1") + kReason}));
  expectIdle();
}

TEST_F(DisplayFailure, BeforeTheFirstRequestAnswersItWithTheReason) {
  memory().userInterface.failInterface(kReason);
  engine().showPopup("one", 0, recordAnswer());
  EXPECT_TRUE(answers().empty());
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, kReason}}));
  expectIdle();
}

TEST_F(DisplayFailure, EndsARunOfSeveralPopupsWithOneAnswer) {
  engine().showPopup("", 1, recordAnswer());
  settle();
  memory().userInterface.failInterface(kReason);
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, kReason}}));
  expectIdle();
}

TEST_F(DisplayFailure, InTheTurnInWhichThePageReportedDoesNotAnswerAgain) {
  engine().showPopup("one", 0, recordAnswer());
  settle();
  const auto window = memory().userInterface.frontWindow();
  post("skip");
  memory().userInterface.failInterface(kReason);
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
}

TEST_F(DisplayFailure, AfterTheRunAnswersNobody) {
  engine().showPopup("one", 0, recordAnswer());
  settle();
  choose("skip");
  memory().userInterface.failInterface(kReason);
  settle();
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(DisplayFailure, WhileThePagesConditionIsAskedAnswersAtOnceAndTheLateAnswerDoesNothing) {
  engine().cachePopup({engine().mergePopupArr().back()},
                      std::make_shared<const ZOVKPopupComplete>(recordAnswer()));
  engine().showPopup();
  settle();
  memory().userInterface.failInterface(kReason);
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, kReason}}));
  memory().urlSession.answer("check.example", 200, R"({"need_popup":1})");
  settle();
  EXPECT_EQ(answers().size(), 1U);
  expectIdle();
}

TEST_F(DisplayFailure, TellsTheHostOfARequestMadeFromTheFailuresCallbackToo) {
  engine().showPopup("one", 0, [this](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    engine().showPopup("two", 0, recordAnswer());
  });
  settle();
  memory().userInterface.failInterface(kReason);
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, kReason}, {-1, kReason}}));
  expectIdle();
}

}  // namespace
}  // namespace zovk
