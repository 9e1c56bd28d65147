#include <boost/json/parse.hpp>

#include "fixtures/ProcessFacts.h"
#include "fixtures/ScreenFixture.h"

namespace zovk {
namespace {

constexpr int kTurns = 10;
constexpr const char* kTurnEnd = "did remove the viewToRemove";

/// A page with something to lose: a count that runs, and a form that the player is filling in.
constexpr const char* kFormPage = R"(<!doctype html><input id="name"><script>
  let ticks = 0, turns = 0, lost = 0;
  setInterval(() => ++ticks, 20);
  const upright = matchMedia('(orientation: portrait)');
  upright.addEventListener('change', () => ++turns);
  const name = document.getElementById('name');
  name.focus();  // at once: autofocus waits for the first frame
  addEventListener('keydown', event => {
    if (event.key !== 'Enter') return;
    const msg = JSON.stringify({name: name.value, ticks, turns, height: innerHeight});
    window.webkit.messageHandlers.ZOVKPopup.postMessage(JSON.stringify({action: 'skip', msg}));
  });
</script>)";

class Rotation : public ScreenFixture {
 protected:
  void SetUp() override {
    if (!VirtualScreen::isThere()) GTEST_SKIP() << "turns no screen but scripts/with-display's";
    display_.resize(390, 844);
  }
  void open(const std::string& scene, std::uint64_t popType = 1) {
    ZOVKPopupModel model = popup(scene, 1);
    model.pop_type = popType;
    bundle().addPage(model, kFormPage);
    start();
    show(scene);
    // A page can be there before the window manager has handed the keyboard over.
    pumpUntil([this] { return screen().hasKeyboard(); }, "the keyboard");
    turnsBefore_ = countOf(kTurnEnd);
  }
  void turnOver(int number) {
    if (number % 2 == 0) {
      turn(display_, 844, 390);
    } else {
      turn(display_, 390, 844);
    }
    const std::size_t turns = turnsBefore_ + static_cast<std::size_t>(number) + 1;
    pumpUntil([&] { return countOf(kTurnEnd) == turns; }, "the old layout to go");
  }
  std::size_t countOf(const std::string& text) {
    std::size_t count = 0;
    for (const std::string& message : screenMessages()) count += message.ends_with(text) ? 1 : 0;
    return count;
  }
  /// Returns what the page has noted when the player has answered it.
  boost::json::value finish() {
    press("Return");
    pumpUntilAnswers(1);
    const boost::json::value answer = boost::json::parse(answers().at(0).second);
    return boost::json::parse(answer.at("msg").as_string());
  }

  VirtualScreen display_;
  std::size_t turnsBefore_ = 0;
};

TEST_F(Rotation, KeepsAPageThatCountsAndAFormThatIsHalfFilledThroughTenTurns) {
  open("lobby");
  press("l a n t");
  const std::size_t processes = descendantsOf(screen().helperProcessId()).size();
  for (int number = 0; number < kTurns; ++number) turnOver(number);
  press("e r n");
  const boost::json::value page = finish();
  EXPECT_EQ(page.at("name"), "lantern");
  EXPECT_EQ(page.at("turns"), kTurns);
  EXPECT_EQ(page.at("height"), 844);
  EXPECT_GT(page.at("ticks").to_number<int>(), kTurns);
  EXPECT_EQ(countOf("Did start provisional navigation"), 1U) << "the page was loaded again";
  EXPECT_EQ(countOf("viewWillTransitionToSize called"), turnsBefore_ + kTurns);
  EXPECT_LE(descendantsOf(screen().helperProcessId()).size(), processes);
}

TEST_F(Rotation, ShowsThePermissionsOneAnswerAndNoOtherButtonAfterEveryTurn) {
  open("ZOVKPolicy_Permission");
  for (int number = 0; number < 3; ++number) {
    turnOver(number);
    for (const char* name : {"returnBtn", "crossBtn", "refreshBtn", "rejectBtn", "stackView"}) {
      EXPECT_FALSE(place(name)->visible) << name;
    }
    const auto answer = place("aloneConfirmStackView");
    EXPECT_TRUE(answer->visible);
    EXPECT_LE(answer->frame.y + answer->frame.height, number % 2 == 0 ? 390 : 844);
  }
  click("aloneConfirmStackView");
  pumpUntilAnswers(1);
  EXPECT_EQ(answers().at(0).first, 0);
}

TEST_F(Rotation, EndsAPolicysPageAboveItsAnswersInBothShapes) {
  open("ZOVKPolicy");
  for (int number = 0; number < kTurns; ++number) turnOver(number);
  const auto answers = place("stackView");
  ASSERT_TRUE(answers && answers->visible);
  EXPECT_EQ(finish().at("height").to_number<double>(), answers->frame.y);
}

TEST_F(Rotation, BringsTheCornerButtonBackThatAnEarlierPopupHid) {
  ZOVKPopupModel game = popup("game", 7, 2, 2);
  game.pop_type = 2;
  bundle().addPage(game, kFormPage);
  bundle().addPage(popup("lobby", 7), kFormPage);
  start();
  ZOVKPopup::showPopup("", 7, recordAnswer());
  awaitPage();
  press("Return");
  awaitPage();
  turnsBefore_ = countOf(kTurnEnd);
  EXPECT_FALSE(place("crossBtn")->visible);
  turnOver(0);
  EXPECT_TRUE(place("crossBtn")->visible);
  click("crossBtn");
  pumpUntilAnswers(1);
}

}  // namespace
}  // namespace zovk
