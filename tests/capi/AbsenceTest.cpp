#include "capi/CGameFixture.h"

namespace zovk {
namespace {

/// Arguments that a game omits are absent for the popups, too, like those of a game in C++.
class CAbsence : public CGameFixture {
 protected:
  /// With a helper that ends at once, so that requests come to their end without a screen.
  void setUpWithoutHelper() {
    addPage("welcome", 1, "<p>Welcome");
    bundle().write();
    std::ofstream(bundle().resourceDirectory() + "/Info.json") << R"({"ZOVK_DEBUG": true})";
    auto mine = settings();
    mine.helper_path = "/bin/false";
    ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  }
  void awaitTheLastEnd() {
    pumpUntil([&] { return logged("No Popup to show"); }, "the end of all requests");
  }

  Note note_;
};

TEST_F(CAbsence, OfACallbackIsLogged) {
  setUpWithoutHelper();
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(countOf("complete is NULL"), 1U) << allLines();
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, Note::complete, &note_, nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(countOf("complete is NULL"), 1U) << allLines();
}

TEST_F(CAbsence, OfACallbackMakesEqualRequestsEndTogether) {
  setUpWithoutHelper();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(zovkpopup_show_popup("welcome", 0, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  }
  awaitTheLastEnd();
  EXPECT_EQ(countOf("Start show Popup"), 1U) << allLines();
}

TEST_F(CAbsence, OfACallbackLetsItsUserDataGoAtOnce) {
  setUpWithoutHelper();
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, nullptr, &note_, Note::destroy), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_EQ(zovkpopup_show_policy(nullptr, &note_, Note::destroy), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.destroyed, 2);
}

TEST_F(CAbsence, IsNotWhatTwoRequestsWithTheSameCallbackHave) {
  setUpWithoutHelper();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(zovkpopup_show_popup("welcome", 0, Note::complete, &note_, nullptr), ZOVKPOPUP_OK);
  }
  awaitTheLastEnd();
  EXPECT_EQ(countOf("Start show Popup"), 2U) << allLines();
  EXPECT_EQ(note_.answers.size(), 2U);
}

TEST_F(CAbsence, OfTheTextsOfAStartCountsAsEmpty) {
  setUpWithoutHelper();
  EXPECT_EQ(zovkpopup_start(nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  EXPECT_TRUE(logged("Start Popup, ID1:, ID2:")) << allLines();
  EXPECT_FALSE(logged("is NULL")) << allLines();
  EXPECT_EQ(zovkpopup_start("http://127.0.0.1:9", "1001", "key"), ZOVKPOPUP_OK);
  EXPECT_EQ(countOf("Popup had started"), 1U) << "the first start counts";
  pumpUntil([&] { return logged("Request remote config failed!"); }, "the request's end");
}

TEST_F(CAbsence, OfThePlayersTextsCountsAsEmpty) {
  setUpWithoutHelper();
  EXPECT_EQ(zovkpopup_set_channel_id(7, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  EXPECT_TRUE(logged("Set state ID1:7 ID2: ID3: ID4:")) << allLines();
}

}  // namespace
}  // namespace zovk
