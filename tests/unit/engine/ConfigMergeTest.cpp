#include <atomic>
#include <thread>

#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class ConfigMerge : public ConfigFixture {
 protected:
  ConfigMerge() {
    engine();
    log().clear();
  }
  static ZOVKPopupModel at(const std::string& scene, std::int32_t publishTime) {
    ZOVKPopupModel popup = webPage(scene);
    popup.publish_time = publishTime;
    return popup;
  }
};

TEST_F(ConfigMerge, LogsEachPairAndTheCount) {
  engine().setRemotePopupArr(listOf({at("b", 1), at("100%s", -2), at("x", 0)}));
  engine().setLocalPopupArr(listOf({at("100%s", 4), at("b", 3)}));
  engine().mergeConfig();
  EXPECT_THAT(lines(),
              ElementsAre("D mergeConfig: Start merge config",
                          "D mergeConfig: Same scene:b, use the one who's publishTime latest",
                          "D mergeConfig: Remote config publishTime:1, Local config publishTime:3",
                          "D mergeConfig: Same scene:100%s, use the one who's publishTime latest",
                          "D mergeConfig: Remote config publishTime:-2, Local config publishTime:4",
                          "D mergeConfig: Merge config done, Popup count:3"));
  EXPECT_EQ(scenesOf(engine().mergePopupArr()), (std::vector<std::string>{"x", "b", "100%s"}));
}

TEST_F(ConfigMerge, OfALocalListAloneKeepsItsOrder) {
  engine().setLocalPopupArr(listOf({at("b", 1), at("a", 2)}));
  engine().mergeConfig();
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("b", "a"));
}

TEST_F(ConfigMerge, OfNothingKeepsTheEarlierList) {
  engine().setRemotePopupArr(listOf({at("a", 1)}));
  engine().mergeConfig();
  engine().setRemotePopupArr({});
  log().clear();
  engine().mergeConfig();
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("a"));
  EXPECT_THAT(lines(), ElementsAre("D mergeConfig: Start merge config",
                                   "D mergeConfig: Merge config done, Popup count:1"));
}

TEST_F(ConfigMerge, LeavesTheTwoListsAsTheyAre) {
  engine().setRemotePopupArr(listOf({at("a", 1), at("b", 1)}));
  engine().setLocalPopupArr(listOf({at("a", 2)}));
  engine().mergeConfig();
  EXPECT_THAT(scenesOf(engine().remotePopupArr()), ElementsAre("a", "b"));
  EXPECT_THAT(scenesOf(engine().localPopupArr()), ElementsAre("a"));
}

TEST_F(ConfigMerge, ReplacesAnEarlierResult) {
  engine().setRemotePopupArr(listOf({at("a", 1), at("b", 1)}));
  engine().mergeConfig();
  engine().setRemotePopupArr(listOf({at("c", 1)}));
  engine().mergeConfig();
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("c"));
}

TEST_F(ConfigMerge, NeverShowsAHalfMadeListToOtherThreads) {
  const PopupList few = listOf({at("a", 1)});
  const PopupList many = listOf({at("a", 1), at("b", 1), at("c", 1)});
  engine().setRemotePopupArr(few);
  engine().mergeConfig();
  ZOVKPopupManager& manager = engine();
  std::atomic<bool> done{false};
  std::atomic<bool> torn{false};
  std::thread reader([&] {
    while (!done) {
      const std::size_t size = manager.mergePopupArr().size();
      if (size != 1 && size != 3) torn = true;
    }
  });
  for (int i = 0; i < 500; ++i) {
    manager.setRemotePopupArr(i % 2 == 0 ? many : few);
    manager.mergeConfig();
  }
  done = true;
  reader.join();
  EXPECT_FALSE(torn);
}

}  // namespace
}  // namespace zovk
