#include <thread>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

class Explain : public CGameFixture {
 protected:
  ~Explain() override { zovkpopup_explanation_free(explanation_); }
  zovkpopup_explained_popup popup(std::size_t index) {
    zovkpopup_explained_popup popup{};
    popup.size = sizeof popup;
    EXPECT_EQ(zovkpopup_explanation_popup(explanation_, index, &popup), ZOVKPOPUP_OK);
    return popup;
  }

  zovkpopup_explanation* explanation_ = nullptr;
};

TEST_F(Explain, TellsOfEachPopupWhyItIsShownOrNot) {
  addPage("welcome", 1, "<p>Welcome");
  addPage("shop", 2, "<p>Shop");
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_explain(nullptr, 2, &explanation_), ZOVKPOPUP_OK);
  EXPECT_STREQ(zovkpopup_explanation_sentence(explanation_),
               "For scene type 2, 1 of 2 would be shown.");
  ASSERT_EQ(zovkpopup_explanation_popup_count(explanation_), 2U);
  EXPECT_STREQ(popup(0).scene, "welcome");
  EXPECT_STREQ(popup(0).verdict, "other_scene_type");
  EXPECT_STREQ(popup(0).wanted, "1");
  EXPECT_STREQ(popup(0).found, "2");
  EXPECT_EQ(popup(0).rank, 0U);
  EXPECT_STREQ(popup(1).scene, "shop");
  EXPECT_STREQ(popup(1).verdict, "passed");
  EXPECT_EQ(popup(1).rank, 1U);
  EXPECT_NE(std::string(popup(1).page).find(".html"), std::string::npos);
  EXPECT_FALSE(std::string(popup(1).sentence).empty());
}

TEST_F(Explain, OutlivesTheHostAndServesOtherThreads) {
  addPage("welcome", 1, "<p>Welcome");
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  std::thread([&] { zovkpopup_explain("welcome", 0, &explanation_); }).join();
  zovkpopup_shut_down();
  EXPECT_STREQ(popup(0).verdict, "passed");
}

TEST_F(Explain, TakesNothingForNothing) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_explain("welcome", 0, nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_TRUE(logged("[Error] zovkpopup_explain: explanation is NULL"));
  EXPECT_EQ(zovkpopup_explanation_sentence(nullptr), nullptr);
  EXPECT_EQ(zovkpopup_explanation_popup_count(nullptr), 0U);
  zovkpopup_explanation_free(nullptr);
  zovkpopup_explained_popup popup{};
  popup.size = sizeof popup;
  EXPECT_EQ(zovkpopup_explanation_popup(nullptr, 0, &popup), ZOVKPOPUP_ERROR_ARGUMENT);
  ASSERT_EQ(zovkpopup_explain("welcome", 0, &explanation_), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_explanation_popup(explanation_, 0, nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(zovkpopup_explanation_popup(explanation_, 0, &popup), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_TRUE(logged("zovkpopup_explanation_popup: there are fewer popups"));
}

}  // namespace
}  // namespace zovk
