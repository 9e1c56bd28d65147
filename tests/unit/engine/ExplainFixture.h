#pragma once

#include <string>
#include <utility>
#include <vector>

#include "fixtures/EngineFixture.h"
#include "zovkpopup/Explain.h"

namespace zovk {

/// The engine with the test's own merged list, asked to explain itself.
class ExplainFixture : public EngineFixture {
 protected:
  static constexpr std::int32_t kNow = 1'000'000;

  ExplainFixture() {
    engine();
    memory().scheduler.setTime(kNow);
  }
  void setPopups(std::vector<ZOVKPopupModel> popups) {
    engine().setMergePopupArr(listOf(std::move(popups)));
    log().clear();
  }
  static ZOVKPopupExplainedPopup only(const ZOVKPopupExplanation& explanation) {
    EXPECT_EQ(explanation.popups.size(), 1U);
    return explanation.popups.empty() ? ZOVKPopupExplainedPopup() : explanation.popups.front();
  }
  ZOVKPopupExplainedPopup byType(const ZOVKPopupModel& popup, std::uint64_t sceneType = 1) {
    setPopups({popup});
    return only(ZOVKPopupExplain::explain("", sceneType));
  }
  ZOVKPopupExplainedPopup byScene(const ZOVKPopupModel& popup, const std::string& scene = "lobby") {
    setPopups({popup});
    return only(ZOVKPopupExplain::explain(scene, 99));
  }
};

/// Returns verdict, wanted value and found value.
inline std::vector<std::string> compared(const ZOVKPopupExplainedPopup& popup) {
  return {popup.verdict, popup.wanted, popup.found};
}

}  // namespace zovk
