#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

// What follows a conditional first popup.
class ConditionChain : public EngineFixture {
 protected:
  ConditionChain() {
    memory().urlSession.setHandler([this](const MemoryRequest&) -> std::optional<MemoryAnswer> {
      return MemoryAnswer{200, std::exchange(next_, R"({"need_popup":1})"), std::nullopt, ""};
    });
    engine();
  }
  void configure(std::vector<ZOVKPopupModel> others) {
    ZOVKPopupModel asked = conditional("asked");
    asked.priority = 9;
    others.insert(others.begin(), asked);
    engine().setMergePopupArr(listOf(std::move(others)));
  }
  void show() {
    engine().showPopup("", 1, recordAnswer());
    settle();
  }
  std::string next_ = R"({"need_popup":1})";
};

TEST_F(ConditionChain, ACommitGoesOnWithTheOthersUnderTheSameCallback) {
  configure({webPage("b"), webPage("a")});
  show();
  EXPECT_EQ(page()->lastLoad(), webPage("asked").uri);
  choose("commit");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(page()->lastLoad(), webPage("b").uri);
  EXPECT_EQ(engine().popupCache().front().popups.size(), 2U);
  choose("skip");
  EXPECT_EQ(page()->lastLoad(), webPage("a").uri);
  choose("skip", "end");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "end")}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(ConditionChain, ACommitOnlyQueuesTheOthersWhichTheEndOfItsEntryThenShows) {
  configure({webPage("b")});
  show();
  log().clear();
  choose("commit");
  EXPECT_THAT(debugMessages(log()),
              ElementsAre("Show Popup done", "Do callback",
                          StartsWith("Cache Popup, Popup count:1, complete:0x"),
                          "Cache callback done", "Show Popup", "Get Popup from cache",
                          "Start show Popup", "Start check key window"));
}

TEST_F(ConditionChain, EveryOtherResultReachesTheHostUnchangedAndEndsTheRequest) {
  configure({webPage("b")});
  show();
  const CallbackPointer chain = engine().popupCache().front().complete;
  const std::vector<Answer> results = {{-1, "broken"}, {-1, ""}, {0, "text"}, {2, "text"}, {3, ""}};
  log().clear();
  for (const auto& [code, message] : results) (*chain)(code, message);
  EXPECT_EQ(answers(), results);
  EXPECT_EQ(engine().popupCache().size(), 1U) << "the others are not queued";
  EXPECT_TRUE(log().lines().empty());
}

TEST_F(ConditionChain, ACommitOfALoneConditionalPopupIsNotTold) {
  configure({});
  show();
  choose("commit");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
  EXPECT_TRUE(engine().popupCache().empty());
}

TEST_F(ConditionChain, ASkipEndsTheRequestAndTheOthersAreNotShown) {
  configure({webPage("b")});
  show();
  choose("skip", "no");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "no")}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(ConditionChain, ACancelEndsTheRequest) {
  configure({webPage("b")});
  show();
  choose("cancel");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel")}}));
}

TEST_F(ConditionChain, ANoForTheFirstEndsTheRequestWithoutShowingTheOthers) {
  configure({webPage("b")});
  next_ = R"({"need_popup":0})";
  show();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, "reatin complete"}}));
  EXPECT_EQ(memory().userInterface.windowsMade(), 0U);
}

TEST_F(ConditionChain, WaitsBehindWhatWasQueuedMeanwhile) {
  configure({webPage("b")});
  show();
  engine().setMergePopupArr(listOf({webPage("other", 2)}));
  engine().showPopup("other", 0, recordAnswer());
  choose("commit");
  EXPECT_EQ(page()->lastLoad(), webPage("other").uri);
  choose("skip", "other");
  EXPECT_EQ(page()->lastLoad(), webPage("b").uri);
  choose("skip", "b");
  EXPECT_EQ(answers(),
            (std::vector<Answer>{{0, resultText("skip", "other")}, {0, resultText("skip", "b")}}));
}

TEST_F(ConditionChain, WithoutACallbackRunsAllTheSame) {
  configure({webPage("b")});
  engine().showPopup("", 1, nullptr);
  settle();
  choose("commit");
  EXPECT_EQ(page()->lastLoad(), webPage("b").uri);
  choose("cancel");
  engine().showPopup("", 1, nullptr);
  settle();
  choose("skip");
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(ConditionChain, OnlyTheFirstPopupIsAskedAboutBeforeTheQueue) {
  ZOVKPopupModel later = conditional("later");
  later.priority = -1;
  engine().setMergePopupArr(listOf({webPage("first"), later}));
  show();
  EXPECT_EQ(memory().urlSession.requestCount(), 0U);
  EXPECT_EQ(page()->lastLoad(), webPage("first").uri);
  choose("skip");
  EXPECT_EQ(memory().urlSession.requestCount(), 1U) << "asked by the page when its turn has come";
  EXPECT_EQ(page()->lastLoad(), later.uri);
}

TEST_F(ConditionChain, AFailureOfTheInterfaceIsToldOnce) {
  configure({webPage("b")});
  show();
  memory().userInterface.failInterface("gone");
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "gone"}}));
}

}  // namespace
}  // namespace zovk
