#include <map>
#include <set>

#include "support/ControllerFixture.h"

namespace zovk {
namespace {

using Names = std::set<std::string>;

// A kind of popup, and what it does to the views that popups before it left.
struct Kind {
  const char* name;
  const char* scene;
  std::uint64_t popType;
  bool needRefresh;
  Names hides;
  Names shows;
  bool dims;
};

const std::vector<Kind>& kinds() {
  static const Names kGameHides = {
      "crossBtn",        "confirmBtn", "rejectBtn", "stackView", "aloneConfirmStackView",
      "centerConfirmBtn"};
  static const std::vector<Kind> all = {
      {"Policy",
       "ZOVKPolicy",
       1,
       false,
       {"returnBtn", "crossBtn", "refreshBtn", "aloneConfirmStackView"},
       {"backgroundView"},
       false},
      {"Permission",
       "ZOVKPolicy_Permission",
       1,
       false,
       {"returnBtn", "crossBtn", "refreshBtn", "rejectBtn", "stackView"},
       {"aloneConfirmStackView", "backgroundView"},
       false},
      {"Ordinary",
       "lobby",
       1,
       false,
       {"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView", "returnBtn", "refreshBtn"},
       {},
       false},
      {"Game", "game", 2, false, kGameHides, {"refreshBtn"}, true},
      {"AllowedGame", "game", 2, true, kGameHides, {}, false}};
  return all;
}

class ButtonsOnScreen : public ControllerFixture {
 protected:
  ZOVKPopupModel popup(const Kind& kind) {
    ZOVKPopupModel model = webPage(kind.scene);
    model.pop_type = kind.popType;
    return model;
  }
  Names hidden() {
    Names names;
    for (const MemoryOutlet& outlet : standardOutlets()) {
      if (layout()->view(outlet.name).hidden) names.insert(outlet.name);
    }
    return names;
  }
  bool isDimmed() { return layout()->view("contentView").background == Color::black(0.5); }
};

class OfAKind : public ButtonsOnScreen, public ::testing::WithParamInterface<Kind> {};

TEST_P(OfAKind, HidesItsViewsOfAFreshLayout) {
  ZOVKPopupViewController::setNeedRefresh(GetParam().needRefresh);
  show({popup(GetParam())});
  EXPECT_EQ(hidden(), GetParam().hides);
  EXPECT_EQ(isDimmed(), GetParam().dims);
}

INSTANTIATE_TEST_SUITE_P(ButtonsOnScreen, OfAKind, ::testing::ValuesIn(kinds()),
                         [](const auto& test) { return std::string(test.param.name); });

class AfterAnother : public ButtonsOnScreen,
                     public ::testing::WithParamInterface<std::tuple<Kind, Kind>> {};

TEST_P(AfterAnother, InheritsWhatTheEarlierLeftHidden) {
  const auto& [first, second] = GetParam();
  ZOVKPopupViewController::setNeedRefresh(first.needRefresh);
  show({popup(first), popup(second)});
  ZOVKPopupViewController::setNeedRefresh(second.needRefresh);
  choose("skip");
  Names expected = first.hides;
  expected.insert(second.hides.begin(), second.hides.end());
  for (const std::string& name : second.shows) expected.erase(name);
  EXPECT_EQ(hidden(), expected);
  EXPECT_EQ(isDimmed(), first.dims || second.dims) << "nothing lifts it but a finished page";
}

INSTANTIATE_TEST_SUITE_P(ButtonsOnScreen, AfterAnother,
                         ::testing::Combine(::testing::ValuesIn(kinds()),
                                            ::testing::ValuesIn(kinds())),
                         [](const auto& test) {
                           return std::string(std::get<1>(test.param).name) + "After" +
                                  std::get<0>(test.param).name;
                         });

TEST_F(ButtonsOnScreen, APolicyShowsItsTwoAnswersAndNoCorner) {
  show({popup(kinds()[0])});
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView", "stackView",
                                              "rejectBtn", "confirmBtn"));
}

TEST_F(ButtonsOnScreen, APermissionShowsItsLoneAnswerOnly) {
  show({popup(kinds()[1])});
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView",
                                              "aloneConfirmStackView", "centerConfirmBtn"));
}

TEST_F(ButtonsOnScreen, AGamePopupBeforeAnOrdinaryOneLeavesItWithoutACorner) {
  show({popup(kinds()[3]), popup(kinds()[2])});
  choose("skip");
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView"));
}

TEST_F(ButtonsOnScreen, AnOrdinaryPopupBeforeAGameOneLeavesItWithTheRefreshOnly) {
  show({popup(kinds()[2]), popup(kinds()[3])});
  choose("skip");
  EXPECT_THAT(layout()->visibleOutlets(),
              ::testing::UnorderedElementsAre("backgroundView", "contentView", "refreshBtn"));
}

TEST_F(ButtonsOnScreen, APolicyOrPermissionBringsTheBackgroundUpAndNothingTakesItAway) {
  for (const std::size_t kind : {0U, 1U}) {
    show({popup(kinds()[2]), popup(kinds()[kind]), popup(kinds()[2])});
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
