#include <boost/json/parse.hpp>

#include "fixtures/EngineFixture.h"

namespace zovk {
namespace {

// What pages do that the queue does not expect.
class DisplayPage : public EngineFixture {
 protected:
  DisplayPage() {
    engine().setMergePopupArr(
        listOf({webPage("one"), webPage("two"), webPage("three"), webPage("four", 2)}));
  }
  void showAll() {
    engine().showPopup("", 1, recordAnswer());  // two, three, one: by name, descending
    settle();
  }
};

TEST_F(DisplayPage, AMessageAfterTheRunHasEndedDoesNothing) {
  engine().showPopup("one", 0, recordAnswer());
  settle();
  const auto view = page();
  choose("skip", "first");
  for (const char* action : {"skip", "commit", "cancel"}) {
    view->postMessage("ZOVKPopup", boost::json::value(resultText(action)));
    settle();
  }
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "first")}}));
}

TEST_F(DisplayPage, AMessageOfAnEndedRunDoesNotReachTheNextOne) {
  engine().showPopup("one", 0, recordAnswer());
  engine().showPopup("four", 0, recordAnswer());
  settle();
  const auto ended = page();
  choose("skip", "first");
  ended->postMessage("ZOVKPopup", boost::json::value(resultText("cancel")));
  settle();
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_EQ(page()->lastLoad(), webPage("four").uri);
  EXPECT_TRUE(engine().isPopuping());
}

TEST_F(DisplayPage, ALoginStateSetWhileThePopupIsUpReachesItsReport) {
  ZOVKPopupModel reported = webPage("reported");
  reported.report_url = "https://report.example/";
  engine().setMergePopupArr(listOf({reported}));
  engine().setChannelID(1, "first", "", "");
  engine().showPopup("reported", 0, recordAnswer());
  settle();
  engine().setChannelID(7, "second", "token", "jwt");
  choose("commit");
  const auto body = boost::json::parse(memory().urlSession.request(0).body.value()).as_object();
  EXPECT_EQ(body.at("channel_id"), 7);
  EXPECT_EQ(body.at("gopenid"), "second");
  EXPECT_EQ(body.at("token"), "token");
  EXPECT_EQ(body.at("jwt_token"), "jwt");
}

TEST_F(DisplayPage, TwoSkipsInOneTurnOfTheLastPopupAnswerOnce) {
  engine().showPopup("one", 0, recordAnswer());
  engine().showPopup("four", 0, recordAnswer());
  settle();
  const auto view = page();
  post("skip", "first");
  view->postMessage("ZOVKPopup", boost::json::value(resultText("skip", "second")));
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "first")}}));
  EXPECT_EQ(page()->lastLoad(), webPage("four").uri);
  choose("skip", "third");
  EXPECT_EQ(answers().size(), 2U);
}

// Every skip ends one popup: the second one passes over the popup that was about to come.
TEST_F(DisplayPage, TwoSkipsInOneTurnPassOverOnePopup) {
  showAll();
  EXPECT_EQ(page()->lastLoad(), webPage("two").uri);
  post("skip");
  post("skip");
  settle();
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(page()->lastLoad(), webPage("one").uri);
  choose("skip", "end");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "end")}}));
}

TEST_F(DisplayPage, MoreSkipsInOneTurnThanPopupsEndTheRunWithoutAResult) {
  showAll();
  for (int i = 0; i < 3; ++i) post("skip");
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, ""}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
  EXPECT_FALSE(engine().isPopuping());
}

TEST_F(DisplayPage, ACancelEndsTheEntryAndWithTheLastEntryTheWindow) {
  showAll();
  choose("cancel");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel")}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(DisplayPage, ACancelWithMorePopupsMakesRoomForTheNextEntry) {
  showAll();
  engine().showPopup("four", 0, recordAnswer());
  choose("cancel");
  EXPECT_EQ(page()->lastLoad(), webPage("four").uri);
  EXPECT_EQ(memory().userInterface.liveWebViews(), 1U);
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel")}, {0, resultText("skip")}}));
}

TEST_F(DisplayPage, AnOncePopupThatIsCancelledIsRecordedThoughTheWindowIsGone) {
  ZOVKPopupModel once = pageFile("once");
  once.pop_freq = 1;
  engine().setMergePopupArr(listOf({once}));
  engine().showPopup("once", 0, recordAnswer());
  settle();
  choose("cancel");
  EXPECT_EQ(memory().files.text(std::string(kCache) + "/ZOVKPopupFrequencyOnce.config"), once.sig);
  EXPECT_FALSE(engine().havePopup(1));
}

TEST_F(DisplayPage, APressedButtonAfterTheEndDoesNothing) {
  engine().showPopup("one", 0, recordAnswer());
  settle();
  const auto layout = memory().userInterface.frontLayout();
  choose("skip");
  for (const char* action : {"crossButtonClicked", "returnButtonClicked", "refreshButtonClicked"}) {
    layout->press(action);
    settle();
  }
  EXPECT_EQ(answers().size(), 1U);
}

}  // namespace
}  // namespace zovk
