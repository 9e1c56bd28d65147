#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/Merge.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Returns a popup that can be recognised by its number.
PopupPointer popup(const std::string& scene, std::int32_t publishTime, std::int32_t number) {
  auto result = std::make_shared<ZOVKPopupModel>();
  result->scene = scene;
  result->publish_time = publishTime;
  result->pop_id = number;
  return result;
}

std::vector<std::int32_t> numbersOf(const PopupList& popups) {
  std::vector<std::int32_t> numbers;
  for (const PopupPointer& one : popups) numbers.push_back(one->pop_id);
  return numbers;
}

PopupListPointer shared(PopupList popups) {
  return std::make_shared<const PopupList>(std::move(popups));
}

PopupList merged(const PopupList& remote, const PopupList& local) {
  return mergePopups(shared(remote), shared(local),
                     [](const ZOVKPopupModel&, const ZOVKPopupModel&) {});
}

TEST(Merge, OfTwoEmptyListsIsEmpty) {
  EXPECT_THAT(merged({}, {}), IsEmpty());
}

TEST(Merge, WithAnEmptyListIsTheOtherOne) {
  const PopupList popups{popup("b", 1, 1), popup("a", 2, 2), popup("b", 3, 3)};
  EXPECT_EQ(merged(popups, {}), popups);
  EXPECT_EQ(merged({}, popups), popups);
}

TEST(Merge, PutsLonelyRemoteThenLonelyLocalThenWinners) {
  const PopupList remote{popup("x", 1, 1), popup("both1", 1, 2), popup("y", 1, 3),
                         popup("both2", 9, 4)};
  const PopupList local{popup("both2", 5, 11), popup("z", 1, 12), popup("both1", 5, 13),
                        popup("w", 1, 14)};
  EXPECT_THAT(numbersOf(merged(remote, local)), ElementsAre(1, 3, 12, 14, 13, 4));
}

TEST(Merge, LocalWinsOnlyWhenItsPublishTimeIsLater) {
  EXPECT_THAT(numbersOf(merged({popup("s", 100, 1)}, {popup("s", 100, 2)})), ElementsAre(1));
  EXPECT_THAT(numbersOf(merged({popup("s", 100, 1)}, {popup("s", 200, 2)})), ElementsAre(2));
  EXPECT_THAT(numbersOf(merged({popup("s", 200, 1)}, {popup("s", 100, 2)})), ElementsAre(1));
  EXPECT_THAT(numbersOf(merged({popup("s", 100, 1)}, {popup("s", 101, 2)})), ElementsAre(2));
}

TEST(Merge, ComparesPublishTimesWithTheirSign) {
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
  EXPECT_THAT(numbersOf(merged({popup("s", -1, 1)}, {popup("s", 0, 2)})), ElementsAre(2));
  EXPECT_THAT(numbersOf(merged({popup("s", kSmallest, 1)}, {popup("s", kLargest, 2)})),
              ElementsAre(2));
  EXPECT_THAT(numbersOf(merged({popup("s", kLargest, 1)}, {popup("s", kSmallest, 2)})),
              ElementsAre(1));
}

TEST(Merge, ComparesScenesExactly) {
  EXPECT_THAT(numbersOf(merged({popup("lobby", 1, 1)}, {popup("Lobby", 2, 2)})), ElementsAre(1, 2));
  EXPECT_THAT(numbersOf(merged({popup("lobby", 1, 1)}, {popup("lobby ", 2, 2)})),
              ElementsAre(1, 2));
  EXPECT_THAT(numbersOf(merged({popup("", 1, 1)}, {popup("", 2, 2)})), ElementsAre(2));
  EXPECT_THAT(numbersOf(merged({popup(std::string("a\0b", 3), 1, 1)}, {popup("a", 2, 2)})),
              ElementsAre(1, 2));
}

TEST(Merge, PairsTheFirstOfTwoRemotePopupsWithTheOneLocal) {
  EXPECT_THAT(numbersOf(merged({popup("s", 1, 1), popup("s", 9, 2)}, {popup("s", 5, 11)})),
              ElementsAre(2, 11));
}

TEST(Merge, PairsTheFirstOfTwoLocalPopupsWithTheOneRemote) {
  EXPECT_THAT(numbersOf(merged({popup("s", 1, 1)}, {popup("s", 5, 11), popup("s", 9, 12)})),
              ElementsAre(12, 11));
}

TEST(Merge, PairsPopupsOfOneSceneInListOrder) {
  EXPECT_THAT(numbersOf(merged({popup("s", 1, 1), popup("s", 9, 2)},
                               {popup("s", 5, 11), popup("s", 5, 12)})),
              ElementsAre(11, 2));
}

TEST(Merge, TellsOfEachPairInRemoteOrder) {
  std::vector<std::pair<int, int>> pairs;
  mergePopups(shared({popup("b", 1, 1), popup("x", 1, 2), popup("a", 1, 3)}),
              shared({popup("a", 1, 11), popup("b", 1, 12)}),
              [&pairs](const ZOVKPopupModel& remote, const ZOVKPopupModel& local) {
                pairs.emplace_back(remote.pop_id, local.pop_id);
              });
  EXPECT_THAT(pairs, ElementsAre(std::pair(1, 12), std::pair(3, 11)));
}

TEST(Merge, KeepsItsPopupsAliveWhenTheListsAreGone) {
  PopupList result;
  {
    PopupList remote{popup("a", 1, 1), popup("s", 1, 2)};
    PopupList local{popup("b", 1, 11), popup("s", 2, 12)};
    result = merged(std::move(remote), std::move(local));
  }
  EXPECT_THAT(numbersOf(result), ElementsAre(1, 11, 12));
  EXPECT_EQ(result[2]->scene, "s");
}

// The rule in its plainest form, to compare with.
PopupList mergedByWalking(const PopupList& remote, PopupList local) {
  if (remote.empty() || local.empty()) return remote.empty() ? local : remote;
  PopupList result;
  PopupList winners;
  for (const PopupPointer& r : remote) {
    auto l = local.begin();
    while (l != local.end() && (*l)->scene != r->scene) ++l;
    if (l == local.end()) {
      result.push_back(r);
    } else {
      winners.push_back(r->publish_time < (*l)->publish_time ? *l : r);
      local.erase(l);
    }
  }
  result.insert(result.end(), local.begin(), local.end());
  result.insert(result.end(), winners.begin(), winners.end());
  return result;
}

PopupList randomPopups(std::mt19937& random, int size, int scenes, int firstNumber) {
  std::uniform_int_distribution<int> scene(0, scenes - 1);
  std::uniform_int_distribution<int> time(-3, 3);
  PopupList popups;
  for (int i = 0; i < size; ++i) {
    popups.push_back(popup("scene" + std::to_string(scene(random)), time(random), firstNumber + i));
  }
  return popups;
}

TEST(Merge, AgreesWithThePlainRuleForRandomLists) {
  std::mt19937 random(20240229);
  std::uniform_int_distribution<int> size(0, 30);
  for (int round = 0; round < 2000; ++round) {
    const int scenes = 1 + round % 40;
    const PopupList remote = randomPopups(random, size(random), scenes, 1);
    const PopupList local = randomPopups(random, size(random), scenes, 1001);
    ASSERT_EQ(numbersOf(merged(remote, local)), numbersOf(mergedByWalking(remote, local)));
  }
}

TEST(Merge, OfTenThousandWithTenThousandKeepsTheOrder) {
  std::mt19937 random(7);
  const PopupList remote = randomPopups(random, 10'000, 8'000, 1);
  const PopupList local = randomPopups(random, 10'000, 8'000, 100'001);
  EXPECT_EQ(numbersOf(merged(remote, local)), numbersOf(mergedByWalking(remote, local)));
}

TEST(Merge, OfManyPopupsOfOneSceneKeepsTheOrder) {
  std::mt19937 random(8);
  const PopupList remote = randomPopups(random, 10'000, 1, 1);
  const PopupList local = randomPopups(random, 9'000, 1, 100'001);
  const auto numbers = numbersOf(merged(remote, local));
  ASSERT_EQ(numbers.size(), 10'000U);
  EXPECT_EQ(numbers.front(), 9'001) << "the first remote popup without a partner";
  EXPECT_EQ(numbers, numbersOf(mergedByWalking(remote, local)));
}

}  // namespace
}  // namespace zovk
