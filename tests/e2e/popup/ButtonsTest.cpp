#include "fixtures/ScreenFixture.h"

namespace zovk {
namespace {

// The engine leaves the answers alone: they are found in the middle of each half of their row.
constexpr double kHalfARow = 108;

class Buttons : public ScreenFixture {
 protected:
  void open(const std::string& scene, std::uint64_t popType = 1, const std::string& more = "") {
    ZOVKPopupModel model = popup(scene, 1);
    model.pop_type = popType;
    bundle().addPage(model, answeringPage("commit", "", false) + more);
    start();
    show(scene);
  }
  void expectAnswer(std::int32_t code, const std::string& action) {
    pumpUntilAnswers(1);
    EXPECT_EQ(answers(),
              (std::vector<Answer>{{code, R"({"action":")" + action + R"(","msg":""})"}}));
  }
};

TEST_F(Buttons, TheCrossSkipsAnOrdinaryPopup) {
  open("lobby");
  click("crossBtn");
  expectAnswer(0, "skip");
}

TEST_F(Buttons, TheReturnCancelsAGamePopup) {
  open("game", 2);
  EXPECT_FALSE(isShown("refreshBtn"));
  click("returnBtn");
  expectAnswer(2, "cancel");
}

TEST_F(Buttons, TheRefreshOfAPageThatLedNowhereLoadsItAgain) {
  open("game", 2, "<script>addEventListener('keydown', () => location = 'nosuch:place')</script>");
  press("x");
  pumpUntil([this] { return isShown("refreshBtn"); }, "the refresh button");
  click("refreshBtn");
  awaitPage();
  EXPECT_FALSE(isShown("refreshBtn"));
  click("returnBtn");
  expectAnswer(2, "cancel");
}

TEST_F(Buttons, TheRejectOfAPolicyCancelsIt) {
  open("ZOVKPolicy");
  click("stackView", -kHalfARow);
  expectAnswer(2, "cancel");
}

TEST_F(Buttons, TheConfirmOfAPolicySkipsIt) {
  open("ZOVKPolicy");
  click("stackView", kHalfARow);
  expectAnswer(0, "skip");
}

TEST_F(Buttons, TheLoneConfirmOfAPermissionSkipsIt) {
  open("ZOVKPolicy_Permission");
  EXPECT_FALSE(isShown("rejectBtn"));
  click("aloneConfirmStackView");
  expectAnswer(0, "skip");
}

TEST_F(Buttons, TheEscapeKeyIsTheCrossOfAnOrdinaryPopup) {
  open("lobby");
  press("Escape");
  expectAnswer(0, "skip");
}

TEST_F(Buttons, TheEscapeKeyIsTheReturnOfAGamePopup) {
  open("game", 2);
  press("Escape");
  expectAnswer(2, "cancel");
}

TEST_F(Buttons, TheEscapeKeyDoesNotEndAPolicyAndTheOthersReachItsAnswers) {
  open("ZOVKPolicy");
  press("Escape");
  press("Tab Tab Return");  // the page's own button comes first
  expectAnswer(2, "cancel");
}

}  // namespace
}  // namespace zovk
