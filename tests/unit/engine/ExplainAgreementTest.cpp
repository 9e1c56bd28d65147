#include <random>

#include "ExplainFixture.h"

namespace zovk {
namespace {

// Lists made at random of few values, so that every rule is met often, and in every order.
class ExplainAgreement : public ExplainFixture {
 protected:
  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

  ZOVKPopupModel anyPopup() {
    const std::string scene(1, static_cast<char>('a' + pick(3)));
    const auto sceneType = static_cast<std::uint64_t>(pick(2));
    const bool isFile = pick(2) == 0;
    ZOVKPopupModel popup = isFile ? pageFile(scene, sceneType) : webPage(scene, sceneType);
    popup.priority = pick(3);
    popup.publish_time = pick(3);
    popup.valid_time = pick(6) == 0 ? kNow + pick(2) : 0;
    popup.expire_time = pick(6) == 0 ? kNow + pick(2) : 0;
    popup.valid_platform = pick(6) == 0 ? "2" : pick(2) == 0 ? "1,2" : "";
    if (pick(6) == 0) popup.sig[0] = popup.sig[0] == '0' ? '1' : '0';  // its page is missing, too
    if (pick(8) == 0) popup.sig = "";
    if (!isFile && pick(6) == 0) popup.uri = "";
    if (isFile && pick(6) == 0) addCacheFile(popup.getPopupFileName(), "changed");
    if (isFile && pick(6) == 0) addCacheFile(kOnceRecordFile, popup.sig);
    return popup;
  }
  PopupList anyList() {
    std::vector<ZOVKPopupModel> popups;
    for (int count = pick(8); count > 0; --count) popups.push_back(anyPopup());
    return listOf(std::move(popups));
  }
  // What would be shown, best first, as the explanation has it.
  PopupList shown(const PopupList& list, const ZOVKPopupExplanation& explanation) {
    EXPECT_EQ(explanation.popups.size(), list.size());
    PopupList result(list.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
      const ZOVKPopupExplainedPopup& popup = explanation.popups[i];
      ++verdicts_[popup.verdict];
      EXPECT_EQ(popup.rank > 0, popup.verdict == "passed");
      if (popup.rank == 0) continue;
      result.at(popup.rank - 1) = list[i];
      ++count;
    }
    result.resize(count);
    return result;
  }

  std::map<std::string, int> verdicts_;

 private:
  std::mt19937 random_{20240607};
};

TEST_F(ExplainAgreement, ShowsExactlyWhatSelectionSelectsInTheSameOrder) {
  for (int round = 0; round < 400; ++round) {
    addCacheFile(kOnceRecordFile, "");
    const PopupList list = anyList();
    engine().setMergePopupArr(list);
    log().clear();
    for (const std::uint64_t type : {0U, 1U}) {
      ASSERT_EQ(shown(list, ZOVKPopupExplain::explain("", type)),
                engine().getValidPopupForSceneType(type, list))
          << "round " << round;
    }
    for (const char* scene : {"a", "b", "c"}) {
      ASSERT_EQ(shown(list, ZOVKPopupExplain::explain(scene, 0)),
                engine().getValidPopupForScene(scene, list))
          << "round " << round;
    }
  }
  EXPECT_EQ(verdicts_.size(), 10U) << "every verdict was met";
  for (const auto& [verdict, times] : verdicts_) EXPECT_GT(times, 20) << verdict;
}

}  // namespace
}  // namespace zovk
