#include <array>
#include <cstddef>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

class Size : public CGameFixture {
 protected:
  zovkpopup_status setUpWithSize(std::size_t size) {
    auto mine = settings();
    mine.size = size;
    return zovkpopup_set_up(&mine);
  }
};

TEST_F(Size, OfNoVersionIsAnError) {
  EXPECT_EQ(setUpWithSize(0), ZOVKPOPUP_ERROR_SIZE);
  EXPECT_EQ(setUpWithSize(sizeof(std::size_t)), ZOVKPOPUP_ERROR_SIZE);
  EXPECT_EQ(setUpWithSize(sizeof(zovkpopup_settings) - 1), ZOVKPOPUP_ERROR_SIZE);
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_hooks hooks{};
  EXPECT_EQ(zovkpopup_set_hooks(&hooks), ZOVKPOPUP_ERROR_SIZE);
  zovkpopup_web_window_settings page{};
  zovkpopup_web_window* window = nullptr;
  EXPECT_EQ(zovkpopup_web_window_open(&page, &window), ZOVKPOPUP_ERROR_SIZE);
  EXPECT_EQ(countOf("the size of a struct is that of no version"), 2U);
}

TEST_F(Size, OfAnOlderGameLeavesWhatItDoesNotKnowAtItsDefault) {
  auto mine = settings();
  Note note;
  mine.log_user = &note;
  mine.log_destroy = Note::destroy;
  mine.helper_path = "/nowhere";  // not to be looked at, and the certificate file neither
  mine.certificate_authority = "/nowhere";
  mine.size = offsetof(zovkpopup_settings, helper_path);
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  zovkpopup_shut_down();
  EXPECT_FALSE(logged(""));  // the older game had no log of its own
  EXPECT_EQ(note.destroyed, 0);
}

TEST_F(Size, OfANewerGameIsReadAsFarAsKnown) {
  struct Newer {
    zovkpopup_settings known;
    std::array<const char*, 4> more;
  } newer{settings(), {"none", "of", "these", "is looked at"}};
  newer.known.size = sizeof newer;
  ASSERT_EQ(zovkpopup_set_up(&newer.known), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_set_up(&newer.known), ZOVKPOPUP_ERROR_STATE);
  EXPECT_TRUE(logged("ZOVKPopupHost::setUp was called before"));
}

TEST_F(Size, OfAnOlderGameIsNotWrittenBeyond) {
  addPage("welcome", 1, "<p>Welcome");
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_explanation* explanation = nullptr;
  ASSERT_EQ(zovkpopup_explain("welcome", 0, &explanation), ZOVKPOPUP_OK);
  zovkpopup_explained_popup popup{};
  popup.size = offsetof(zovkpopup_explained_popup, verdict);
  popup.verdict = "untouched";
  popup.pop_id = 77;
  EXPECT_EQ(zovkpopup_explanation_popup(explanation, 0, &popup), ZOVKPOPUP_OK);
  EXPECT_STREQ(popup.scene, "welcome");
  EXPECT_STREQ(popup.verdict, "untouched");
  EXPECT_EQ(popup.pop_id, 77);
  EXPECT_EQ(popup.size, offsetof(zovkpopup_explained_popup, verdict));
  popup.size = 1;
  EXPECT_EQ(zovkpopup_explanation_popup(explanation, 0, &popup), ZOVKPOPUP_ERROR_SIZE);
  zovkpopup_explanation_free(explanation);
}

}  // namespace
}  // namespace zovk
