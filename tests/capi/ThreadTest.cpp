#include <thread>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

class OtherThread : public CGameFixture {
 protected:
  /// Returns the status of a call on a thread that is not the main one.
  static zovkpopup_status elsewhere(const std::function<zovkpopup_status()>& call) {
    zovkpopup_status status = ZOVKPOPUP_OK;
    std::thread([&] { status = call(); }).join();
    return status;
  }
};

TEST_F(OtherThread, IsToldThatTheHostBelongsToTheMainThread) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_hooks hooks{};
  hooks.size = sizeof hooks;
  const std::vector<std::function<zovkpopup_status()>> calls = {
      [] { return zovkpopup_pump(2000); },
      [&] { return zovkpopup_set_hooks(&hooks); },
      [] { return zovkpopup_hold_popups(); },
      [] { return zovkpopup_release_popups(); },
      [] { return zovkpopup_game_pad_did_press(ZOVKPOPUP_GAME_PAD_UP, nullptr, nullptr); },
      [] { return zovkpopup_game_window_did_become_key(); },
      [] { return zovkpopup_game_window_did_resign_key(); },
      [] { return zovkpopup_start("http://127.0.0.1:9", "1", "2"); },
      [] { return zovkpopup_set_channel_id(1, "", "", ""); },
      [] { return zovkpopup_shut_down(); },
  };
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(elsewhere(calls[i]), ZOVKPOPUP_ERROR_THREAD) << i;
    EXPECT_EQ(countOf("this was called on another thread than the main thread"), i + 1);
  }
  EXPECT_EQ(elsewhere([] { return zovkpopup_have_popup(1) ? 1 : 0; }), 0);
  EXPECT_EQ(zovkpopup_pump(2000), ZOVKPOPUP_OK);
}

TEST_F(OtherThread, IsAnsweredWhenItAsksForAPopup) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  Note note;
  const auto show = [&] {
    return zovkpopup_show_popup("welcome", 0, Note::complete, &note, Note::destroy);
  };
  EXPECT_EQ(elsewhere(show), ZOVKPOPUP_ERROR_THREAD);
  ASSERT_EQ(note.answers.size(), 1U);
  EXPECT_EQ(note.answers[0].first, -1);
  EXPECT_EQ(note.answers[0].second, zovkpopup_error_message(ZOVKPOPUP_ERROR_THREAD));
  EXPECT_EQ(note.destroyed, 1);
}

TEST_F(OtherThread, OpensNoWindow) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_web_window_settings page{};
  page.size = sizeof page;
  page.address = "http://127.0.0.1:9";
  int nothing = 0;
  auto* window = reinterpret_cast<zovkpopup_web_window*>(&nothing);
  EXPECT_EQ(elsewhere([&] { return zovkpopup_web_window_open(&page, &window); }),
            ZOVKPOPUP_ERROR_THREAD);
  EXPECT_EQ(window, nullptr);
}

}  // namespace
}  // namespace zovk
