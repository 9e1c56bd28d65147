#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

constexpr const char* kRecord =
    "/home/player/Library/Caches/ZOVKPopup/ZOVKPopupFrequencyOnce.config";

// One run of popups, from the hand-over to the completion.
class Run : public ControllerFixture {
 protected:
  std::vector<std::string> debug() { return controllerMessages(log()); }
};

TEST_F(Run, TakesTheGameAndThePlayer) {
  EXPECT_THAT(debug(), ElementsAre("Set state ID1:1001 ID2:key ID3:7 ID4:open ID5:token, ID6:jwt"));
}

TEST_F(Run, ShowsItsPopupsInTheGivenOrderAndAnswersAfterTheLast) {
  show({webPage("a"), webPage("b"), webPage("c")});
  EXPECT_THAT(debug(), Contains("Popup count:3"));
  for (const char* scene : {"a", "b", "c"}) {
    EXPECT_EQ(sceneOnScreen(), scene);
    EXPECT_EQ(page()->lastLoad(), webPage(scene).uri);
    EXPECT_TRUE(answers().empty());
    choose("skip", scene);
  }
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip", "c")}}));
  EXPECT_EQ(memory().userInterface.webViewsMade(), 1U);
}

TEST_F(Run, LogsTheBeginningAndTheEndOfEachPopup) {
  show({webPage("a"), webPage("b")});
  log().clear();
  choose("skip");
  EXPECT_THAT(debug(), ElementsAre("Finish show a", "Start show b"));
}

TEST_F(Run, BeginsFromTheMainQueueAfterTheWindowTookTheController) {
  controller().showPopup(listOf({webPage("a")}), window().get(), recordAnswer());
  EXPECT_EQ(window()->rootViewController().get(), &controller());
  EXPECT_EQ(controller().currentModel(), nullptr);
  EXPECT_EQ(controller().popupArr().size(), 1U);
  settle();
  EXPECT_EQ(sceneOnScreen(), "a");
  EXPECT_TRUE(controller().popupArr().empty());
}

TEST_F(Run, WithoutPopupsEndsAtOnceWithAnEmptyResult) {
  show({});
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, ""}}));
  EXPECT_EQ(page()->lastLoad(), "");
}

TEST_F(Run, WithoutAWindowShowsNothingAndNeverAnswers) {
  const auto lone = makeController();
  lone->showPopup(listOf({webPage("a")}), nullptr, recordAnswer());
  settle();
  EXPECT_EQ(memory().userInterface.webViewsMade(), 0U);
  EXPECT_TRUE(answers().empty());
}

TEST_F(Run, WithoutACallbackRunsToItsEnd) {
  controller().showPopup(listOf({webPage("a")}), window().get(), nullptr);
  settle();
  choose("skip");
  EXPECT_TRUE(controller().popupArr().empty());
}

TEST_F(Run, KeepsWhatItHasWhenNothingNewIsGiven) {
  controller().showPopup(listOf({webPage("a")}), nullptr, recordAnswer());
  controller().showPopup({}, window().get(), nullptr);
  settle();
  EXPECT_EQ(sceneOnScreen(), "a");
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(Run, ANewListTakesThePlaceOfTheOneBefore) {
  controller().showPopup(listOf({webPage("a"), webPage("b")}), nullptr, nullptr);
  controller().showPopup(listOf({webPage("c")}), window().get(), recordAnswer());
  ASSERT_EQ(controller().popupArr().size(), 1U);
  settle();
  EXPECT_EQ(sceneOnScreen(), "c");
  choose("skip");
  EXPECT_EQ(answers().size(), 1U);
}

TEST_F(Run, ALaterCallbackTakesThePlaceOfTheOneBefore) {
  int toldToTheFirst = 0;
  controller().showPopup(listOf({webPage("a")}), nullptr,
                         [&](std::int32_t, const std::string&) { ++toldToTheFirst; });
  controller().showPopup({}, window().get(), recordAnswer());
  settle();
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}}));
  EXPECT_EQ(toldToTheFirst, 0);
}

TEST_F(Run, GivesItsPopupsOutFirstInFirstOut) {
  const PopupList popups = listOf({webPage("a"), webPage("b")});
  controller().showPopup(popups, nullptr, nullptr);
  EXPECT_EQ(controller().getPopupModel(), popups[0]);
  EXPECT_EQ(controller().getPopupModel(), popups[1]);
  EXPECT_EQ(controller().getPopupModel(), nullptr);
}

TEST_F(Run, RecordsAnOncePopupWhenItEndsAndNoOther) {
  ZOVKPopupModel once = webPage("once");
  once.pop_freq = 1;
  show({once, webPage("often"), once});
  EXPECT_EQ(memory().files.text(kRecord), std::nullopt) << "not when it is put on screen";
  choose("skip");
  EXPECT_EQ(memory().files.text(kRecord), once.sig);
  choose("skip");
  choose("skip");
  EXPECT_EQ(memory().files.text(kRecord), once.sig) << "a key stands there once";
}

TEST_F(Run, AddsAKeyToTheRecordBehindAComma) {
  addCacheFile("ZOVKPopupFrequencyOnce.config", "other");
  ZOVKPopupModel once = webPage("once");
  once.pop_freq = 1;
  show({once});
  choose("cancel");
  EXPECT_EQ(memory().files.text(kRecord), "other," + once.sig);
}

TEST_F(Run, DoesNotRecordAConditionalPopup) {
  show({conditional("asked")});
  choose("skip");
  EXPECT_EQ(memory().files.text(kRecord), std::nullopt);
}

}  // namespace
}  // namespace zovk
