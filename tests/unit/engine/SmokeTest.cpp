#include "support/EngineFixture.h"

namespace zovk {
namespace {

using Smoke = EngineFixture;

TEST_F(Smoke, APopupIsShownAndItsAnswerReachesTheHost) {
  engine().setMergePopupArr(listOf({pageFile("lobby")}));
  engine().showPopup("lobby", 0, recordAnswer());
  settle();
  const auto page = memory().userInterface.frontWebView();
  ASSERT_NE(page, nullptr);
  EXPECT_EQ(page->lastLoad(),
            "file://" + std::string(kCache) + "/" + pageFile("lobby").getPopupFileName());
  page->postMessage("ZOVKPopup", R"({"action":"skip","msg":"later"})");
  settle();
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, R"({"action":"skip","msg":"later"})"}}));
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

}  // namespace
}  // namespace zovk
