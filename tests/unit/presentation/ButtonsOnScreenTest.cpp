#include <map>
#include <set>

#include "fixtures/ControllerFixture.h"

namespace zovk {
namespace {

using Names = std::set<std::string>;

// What a group of kinds does to the views that popups before it left.
struct Rule {
  Names hides;
  Names shows;
  bool dims;
};

const Rule kPolicy = {
    {"returnBtn", "crossBtn", "refreshBtn", "aloneConfirmStackView"}, {"backgroundView"}, false};
const Rule kPermission = {{"returnBtn", "crossBtn", "refreshBtn", "rejectBtn", "stackView"},
                          {"aloneConfirmStackView", "backgroundView"},
                          false};
const Rule kOrdinary = {
    {"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView", "returnBtn", "refreshBtn"},
    {},
    false};
const Names kGameHides = {
    "crossBtn",        "confirmBtn", "rejectBtn", "stackView", "aloneConfirmStackView",
    "centerConfirmBtn"};
const Rule kGame = {kGameHides, {"refreshBtn"}, true};
const Rule kAllowedGame = {kGameHides, {}, false};

// A scene, a kind and the flag that all controllers share.
struct Kind {
  const char* scene;
  std::uint64_t popType;
  bool needRefresh;
  Rule rule;
};

std::vector<Kind> kinds() {
  std::vector<Kind> all;
  for (const std::uint64_t popType : {0U, 1U, 2U, 3U}) {
    for (const bool needRefresh : {false, true}) {
      const Rule& game = needRefresh ? kAllowedGame : kGame;
      all.push_back({"ZOVKPolicy", popType, needRefresh, kPolicy});
      all.push_back({"ZOVKPolicy_Permission", popType, needRefresh, kPermission});
      all.push_back({"lobby", popType, needRefresh, popType == 2 ? game : kOrdinary});
    }
  }
  return all;
}

std::string nameOf(const Kind& kind) {
  return std::string(kind.scene) + "OfKind" + std::to_string(kind.popType) +
         (kind.needRefresh ? "Allowed" : "");
}

class ButtonsOnScreen : public ControllerFixture {
 protected:
  ZOVKPopupModel popup(const Kind& kind) {
    ZOVKPopupModel model = webPage(kind.scene);
    model.pop_type = kind.popType;
    return model;
  }
  ZOVKPopupModel policy() { return webPage("ZOVKPolicy"); }
  ZOVKPopupModel permission() { return webPage("ZOVKPolicy_Permission"); }
  ZOVKPopupModel ordinary() { return webPage("lobby"); }
  ZOVKPopupModel game() {
    ZOVKPopupModel model = webPage("lobby");
    model.pop_type = 2;
    return model;
  }
  Names hidden() {
    Names names;
    for (const MemoryOutlet& outlet : standardOutlets()) {
      if (layout()->view(outlet.name).hidden) names.insert(outlet.name);
    }
    return names;
  }
  void turn() {
    isLandscape_ = !isLandscape_;
    const Size size = isLandscape_ ? Size{1920, 1080} : Size{1080, 1920};
    memory().device.setOrientation(isLandscape_ ? Orientation::kLandscapeLeft
                                                : Orientation::kPortrait);
    window()->resize(size);
    settle();
  }
  bool isDimmed() { return layout()->view("contentView").background == Color::black(0.5); }

 private:
  bool isLandscape_ = false;
};

class OfAKind : public ButtonsOnScreen, public ::testing::WithParamInterface<Kind> {};

TEST_P(OfAKind, HidesItsViewsOfAFreshLayout) {
  ZOVKPopupViewController::setNeedRefresh(GetParam().needRefresh);
  show({popup(GetParam())});
  EXPECT_EQ(hidden(), GetParam().rule.hides);
  EXPECT_EQ(isDimmed(), GetParam().rule.dims);
}

TEST_P(OfAKind, InheritsWhatAnyOtherKindLeftHidden) {
  const Kind& second = GetParam();
  for (const Kind& first : kinds()) {
    ZOVKPopupViewController::setNeedRefresh(first.needRefresh);
    show({popup(first), popup(second)});
    ZOVKPopupViewController::setNeedRefresh(second.needRefresh);
    choose("skip");
    Names expected = first.rule.hides;
    expected.insert(second.rule.hides.begin(), second.rule.hides.end());
    for (const std::string& name : second.rule.shows) expected.erase(name);
    EXPECT_EQ(hidden(), expected) << "after " << nameOf(first);
    EXPECT_EQ(isDimmed(), first.rule.dims || second.rule.dims)
        << "after " << nameOf(first) << ": nothing lifts it but a finished page";
  }
}

TEST_P(OfAKind, IsAsOnAFreshLayoutAgainAfterATurn) {
  const Kind& second = GetParam();
  for (const Kind& first : kinds()) {
    ZOVKPopupViewController::setNeedRefresh(first.needRefresh);
    show({popup(first), popup(second)});
    choose("skip");
    ZOVKPopupViewController::setNeedRefresh(second.needRefresh);
    turn();
    EXPECT_EQ(hidden(), second.rule.hides) << "after " << nameOf(first);
    EXPECT_EQ(isDimmed(), second.rule.dims) << "after " << nameOf(first);
  }
}

INSTANTIATE_TEST_SUITE_P(ButtonsOnScreen, OfAKind, ::testing::ValuesIn(kinds()),
                         [](const auto& test) { return nameOf(test.param); });

TEST_F(ButtonsOnScreen, APolicyShowsItsTwoAnswersAndNoCorner) {
  show({policy()});
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView", "stackView",
                                              "rejectBtn", "confirmBtn"));
}

TEST_F(ButtonsOnScreen, APermissionShowsItsLoneAnswerOnly) {
  show({permission()});
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView",
                                              "aloneConfirmStackView", "centerConfirmBtn"));
}

TEST_F(ButtonsOnScreen, AGamePopupBeforeAnOrdinaryOneLeavesItWithoutACorner) {
  show({game(), ordinary()});
  choose("skip");
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView"));
}

TEST_F(ButtonsOnScreen, AnOrdinaryPopupBeforeAGameOneLeavesItWithTheRefreshOnly) {
  show({ordinary(), game()});
  choose("skip");
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView", "refreshBtn"));
}

TEST_F(ButtonsOnScreen, APolicyOrPermissionBringsTheBackgroundUpAndNothingTakesItAway) {
  for (const ZOVKPopupModel& answered : {policy(), permission()}) {
    show({ordinary(), answered, ordinary()});
    layout()->view("backgroundView").hidden = true;
    choose("skip");
    EXPECT_FALSE(layout()->view("backgroundView").hidden);
    choose("skip");
    EXPECT_FALSE(layout()->view("backgroundView").hidden);
    choose("skip");
  }
}

}  // namespace
}  // namespace zovk
