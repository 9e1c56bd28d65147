#include "capi/CGameFixture.h"

namespace zovk {
namespace {

using CHost = CGameFixture;

TEST_F(CHost, IsSetUpPumpedAndShutDown) {
  EXPECT_EQ(zovkpopup_poll_descriptor(), -1);
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_GE(zovkpopup_poll_descriptor(), 0);
  EXPECT_EQ(zovkpopup_pump(0), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_pump(UINT32_MAX), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_game_window_did_become_key(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_game_window_did_resign_key(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_poll_descriptor(), -1);
}

TEST_F(CHost, TakesPressesOfGamePadsThatThereAre) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  for (uint32_t press = ZOVKPOPUP_GAME_PAD_UP; press <= ZOVKPOPUP_GAME_PAD_LEAVE; ++press) {
    EXPECT_EQ(zovkpopup_game_pad_did_press(press, nullptr, "Circle"), ZOVKPOPUP_OK);
  }
  EXPECT_EQ(zovkpopup_game_pad_did_press(ZOVKPOPUP_GAME_PAD_LEAVE + 1, nullptr, nullptr),
            ZOVKPOPUP_ERROR_ARGUMENT);
}

TEST_F(CHost, MayBeSetUpAnewAfterItWasShutDown) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_pump(2000), ZOVKPOPUP_OK);
}

TEST_F(CHost, DoesWithoutSettings) {
  const ScratchDirectory data;
  setenv("XDG_DATA_HOME", data.path().c_str(), 1);
  EXPECT_EQ(zovkpopup_set_up(nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
}

TEST_F(CHost, LetsTheLogGoWhenAnotherTakesItsPlace) {
  Note first;
  auto mine = settings();
  mine.log_user = &first;
  mine.log = [](const char*, void* user) { Note::event(user); };
  mine.log_destroy = Note::destroy;
  ASSERT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_OK);
  EXPECT_FALSE(zovkpopup_have_popup(1));
  EXPECT_GT(first.calls, 0);
  zovkpopup_shut_down();
  EXPECT_EQ(first.destroyed, 0);
  const int before = first.calls;
  zovkpopup_hold_popups();
  EXPECT_GT(first.calls, before);  // the log outlasts the host
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(first.destroyed, 1);
}

TEST_F(CHost, LetsTheLogOfASetUpThatFailsGo) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  Note note;
  auto mine = settings();
  mine.log_user = &note;
  mine.log_destroy = Note::destroy;
  EXPECT_EQ(zovkpopup_set_up(&mine), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(note.destroyed, 1);
}

TEST_F(CHost, SaysWhatCannotBeDoneWhenItIsNotSetUp) {
  EXPECT_EQ(zovkpopup_pump(2000), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_game_window_did_become_key(), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_game_window_did_resign_key(), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
}

TEST_F(CHost, SaysWhatCannotBeDoneAfterItWasShutDown) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_shut_down();
  Note note;
  zovkpopup_hooks hooks{sizeof hooks, Note::event, Note::event, &note, Note::destroy, nullptr};
  EXPECT_EQ(zovkpopup_set_hooks(&hooks), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_hold_popups(), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_release_popups(), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_start("http://127.0.0.1:9", "1", "2"), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_set_channel_id(1, "", "", ""), ZOVKPOPUP_ERROR_STATE);
  EXPECT_FALSE(zovkpopup_have_popup(1));
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, Note::complete, &note, Note::destroy),
            ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_show_policy(Note::complete, &note, Note::destroy), ZOVKPOPUP_ERROR_STATE);
  ASSERT_EQ(note.answers.size(), 2U);
  EXPECT_EQ(note.answers[0].first, -1);
  EXPECT_EQ(note.answers[1].second, zovkpopup_error_message(ZOVKPOPUP_ERROR_STATE));
  EXPECT_EQ(note.destroyed, 3);
  EXPECT_EQ(countOf("the host is not set up, or was shut down"), 8U) << allLines();
}

TEST_F(CHost, TellsWhatIsMissing) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_set_hooks(nullptr), ZOVKPOPUP_ERROR_ARGUMENT);
  EXPECT_EQ(countOf("[Error] zovkpopup_set_hooks: hooks is NULL"), 1U) << allLines();
}

TEST_F(CHost, AGameMayDoWithoutSetUpButNotComeBackToIt) {
  const ScratchDirectory data;
  setenv("XDG_DATA_HOME", data.path().c_str(), 1);
  Note note;
  EXPECT_EQ(zovkpopup_show_popup("nothing", 0, Note::complete, &note, Note::destroy), ZOVKPOPUP_OK);
  EXPECT_EQ(note.answers.size(), 1U);
  EXPECT_EQ(note.destroyed, 1);
  EXPECT_GE(zovkpopup_poll_descriptor(), 0);
  EXPECT_EQ(setUp(), ZOVKPOPUP_ERROR_STATE);
  EXPECT_EQ(zovkpopup_pump(2000), ZOVKPOPUP_OK);
}

}  // namespace
}  // namespace zovk
