#include <gtest/gtest.h>

#include "engine/Selection.h"

namespace zovk {
namespace {

PopupPointer popup(std::int32_t priority, std::int32_t publishTime, const std::string& scene) {
  ZOVKPopupModel model;
  model.priority = priority;
  model.publish_time = publishTime;
  model.scene = scene;
  return std::make_shared<const ZOVKPopupModel>(model);
}

PopupList ranked(PopupList popups) {
  rankPopups(popups);
  return popups;
}

TEST(SelectionRank, PutsTheHigherPriorityFirst) {
  const auto low = popup(5, 200, "z");
  const auto high = popup(9, 100, "a");
  const auto negative = popup(-1, 300, "zz");
  EXPECT_EQ(ranked({negative, low, high}), (PopupList{high, low, negative}));
}

TEST(SelectionRank, PutsTheLaterOfEqualPriorityFirst) {
  const auto early = popup(5, 100, "z");
  const auto late = popup(5, 200, "a");
  EXPECT_EQ(ranked({early, late}), (PopupList{late, early}));
}

TEST(SelectionRank, PutsTheSceneThatSortsLastFirstWhenTheTimesAreEqualToo) {
  const auto upper = popup(5, 100, "Z");
  const auto a = popup(5, 100, "a");
  const auto b = popup(5, 100, "b");
  EXPECT_EQ(ranked({a, upper, b}), (PopupList{b, a, upper}));
}

TEST(SelectionRank, KeepsTheOrderOfEqualOnes) {
  const auto first = popup(5, 100, "a");
  const auto second = popup(5, 100, "a");
  EXPECT_EQ(ranked({first, second}), (PopupList{first, second}));
  EXPECT_EQ(ranked({second, first}), (PopupList{second, first}));
}

}  // namespace
}  // namespace zovk
