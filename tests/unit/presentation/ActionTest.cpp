#include <limits>
#include <stdexcept>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::Not;

// What the player's choice does, from pages and from buttons.
class Action : public ControllerFixture {
 protected:
  static ZOVKPopupModel reported(const std::string& scene) {
    ZOVKPopupModel popup = webPage(scene);
    popup.report_url = "https://report.example/" + scene;
    return popup;
  }
  std::size_t reports() { return memory().urlSession.requestsTo("report.example").size(); }
  std::vector<std::string> debug() { return controllerMessages(log()); }
};

TEST_F(Action, ASkipIsToldOnlyByTheLastPopup) {
  show({reported("a"), reported("b")});
  choose("skip", "one");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(sceneOnScreen(), "b");
  choose("skip", "two");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "two")}}));
  EXPECT_EQ(reports(), 0U);
}

TEST_F(Action, ACommitIsReportedByEachPopupAndToldOnlyByTheLast) {
  show({reported("a"), reported("b")});
  choose("commit", "one");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(sceneOnScreen(), "b");
  EXPECT_THAT(log().lines(), Contains("the num of popupCache is 1"));
  choose("commit", "two");
  EXPECT_EQ(answers(), (std::vector<Answer>{{1, resultText("commit", "two")}}));
  EXPECT_THAT(log().lines(), Contains("the num of popupCache is 0"));
  EXPECT_EQ(reports(), 2U);
}

TEST_F(Action, ACommitWithoutReportAddressIsADeadEndThatAButtonLeaves) {
  ZOVKPopupModel once = webPage("a");
  once.pop_freq = 1;
  show({once, webPage("b")});
  log().clear();
  choose("commit");
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, ""}}));
  EXPECT_THAT(debug(), Contains("The currentModel report_url is illegal: , report ending"));
  EXPECT_THAT(debug(), Not(Contains("Finish show a")));
  EXPECT_EQ(sceneOnScreen(), "a");
  EXPECT_EQ(reports(), 0U);
  EXPECT_FALSE(memory().files.exists(std::string(kCache) + "/ZOVKPopupFrequencyOnce.config"));
  press("crossButtonClicked");
  EXPECT_EQ(sceneOnScreen(), "b");
  press("crossButtonClicked");
  EXPECT_EQ(answers().size(), 1U) << "the callback is spent";
}

TEST_F(Action, ACancelIsToldAtOnceAndTheOthersAreShownWithoutBeingTold) {
  show({webPage("a"), webPage("b")});
  post("cancel");
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, resultText("cancel")}}));
  EXPECT_THAT(debug(), Contains("the user operation is: 2 ,msg: " + resultText("cancel")));
  settle();
  EXPECT_EQ(sceneOnScreen(), "b");
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_EQ(reports(), 0U);
}

TEST_F(Action, AnErrorPassedInIsTreatedLikeACancel) {
  show({webPage("a"), webPage("b")});
  controller().handleCallbackMessage(-1, "why");
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, resultText("error", "why")}}));
  EXPECT_EQ(sceneOnScreen(), "b");
}

TEST_F(Action, ACodeWithoutANameIsAProgrammingError) {
  show({webPage("a")});
  for (const std::int32_t code : {-2, 3, 4, 100, std::numeric_limits<std::int32_t>::max(),
                                  std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_THROW(controller().handleCallbackMessage(code, ""), std::out_of_range) << code;
  }
  settle();
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(sceneOnScreen(), "a");
}

TEST_F(Action, AMessageThatIsNoTextIsRecordedAsEmpty) {
  for (const boost::json::value& message :
       {boost::json::value(nullptr), boost::json::value(7), boost::json::value(true),
        boost::json::value(boost::json::array{1}), boost::json::value(boost::json::object{})}) {
    controller().showPopup(listOf({webPage("a")}), window().get(), recordAnswer());
    settle();
    controller().handleCallbackMessage(2, message);
    settle();
    EXPECT_EQ(answers().back(), (Answer{2, resultText("cancel")}));
  }
  EXPECT_EQ(answers().size(), 5U);
}

struct ButtonRow {
  const char* action;
  std::int32_t code;
  const char* name;
  bool toldWhenOthersWait;
};

class Button : public Action, public ::testing::WithParamInterface<ButtonRow> {};

TEST_P(Button, EndsThePopupWithItsCodeAndSendsNoReport) {
  show({reported("a")});
  press(GetParam().action);
  EXPECT_EQ(answers(), (std::vector<Answer>{{GetParam().code, resultText(GetParam().name)}}));
  EXPECT_EQ(reports(), 0U);
}

TEST_P(Button, GoesOnToTheNextPopup) {
  show({reported("a"), reported("b")});
  press(GetParam().action);
  EXPECT_EQ(sceneOnScreen(), "b");
  EXPECT_EQ(!answers().empty(), GetParam().toldWhenOthersWait);
}

INSTANTIATE_TEST_SUITE_P(Action, Button,
                         ::testing::Values(ButtonRow{"rejectButtonDidClicked", 2, "cancel", true},
                                           ButtonRow{"confirmButtonDidClicked", 0, "skip", false},
                                           ButtonRow{"returnButtonClicked", 2, "cancel", true},
                                           ButtonRow{"crossButtonClicked", 0, "skip", false}),
                         [](const auto& test) { return std::string(test.param.action); });

TEST_F(Action, AnUnknownButtonDoesNothing) {
  show({webPage("a")});
  press("someOtherAction");
  EXPECT_TRUE(answers().empty());
  EXPECT_EQ(sceneOnScreen(), "a");
}

TEST_F(Action, TwoSkipsInOneTurnPassOverThePopupBetween) {
  show({webPage("a"), webPage("b"), webPage("c")});
  post("skip");
  post("skip");
  settle();
  EXPECT_EQ(sceneOnScreen(), "c");
  EXPECT_TRUE(answers().empty());
}

TEST_F(Action, AScreenThatFailsEndsTheWholeRunWithItsReason) {
  show({webPage("a"), webPage("b")});
  controller().interfaceDidFail("no screen");
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "no screen"}}));
  EXPECT_TRUE(controller().popupArr().empty());
  choose("skip");
  EXPECT_EQ(sceneOnScreen(), "a");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(Action, ACallbackMayCloseTheWindow) {
  ZOVKPopupModel once = webPage("a");
  once.pop_freq = 1;
  controller().showPopup(listOf({once, webPage("b")}), window().get(),
                         [this](std::int32_t code, const std::string& message) {
                           recordAnswer()(code, message);
                           close();
                         });
  settle();
  choose("cancel");
  EXPECT_EQ(answers().size(), 1U);
  EXPECT_EQ(controller().currentModel(), nullptr);
  EXPECT_TRUE(memory().files.exists(std::string(kCache) + "/ZOVKPopupFrequencyOnce.config"))
      << "the popup is finished all the same";
}

}  // namespace
}  // namespace zovk
