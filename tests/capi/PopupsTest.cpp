#include <stdexcept>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

class CPopups : public CGameFixture {
 protected:
  zovkpopup_status show(const char* scene, std::uint64_t sceneType) {
    return zovkpopup_show_popup(scene, sceneType, Note::complete, &note_, Note::destroy);
  }
  void awaitAnswers(std::size_t count) {
    pumpUntil([&] { return note_.answers.size() >= count; }, std::to_string(count) + " answers");
  }

  Note note_;
};

TEST_F(CPopups, APageAnswersAndTheGameHearsItOnce) {
  addPage("welcome", 1, answeringPage("cancel", "later", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_TRUE(zovkpopup_have_popup(1));
  EXPECT_FALSE(zovkpopup_have_popup(2));
  EXPECT_EQ(show("welcome", 0), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.destroyed, 0);
  awaitAnswers(1);
  EXPECT_EQ(note_.answers[0].first, 2);
  EXPECT_EQ(note_.answers[0].second, R"({"action":"cancel","msg":"later"})");
  pumpUntil([&] { return note_.destroyed == 1; }, "the user data to be let go");
}

TEST_F(CPopups, ASceneTypeIsAskedForWithNoSceneOrAnEmptyOne) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(show(nullptr, 1), ZOVKPOPUP_OK);
  EXPECT_EQ(show("", 1), ZOVKPOPUP_OK);
  awaitAnswers(2);
  EXPECT_EQ(note_.answers[0].first, 0);
  EXPECT_EQ(note_.answers[1].first, 0);
}

TEST_F(CPopups, WithNothingToShowTheAnswerComesAtOnce) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(show(nullptr, 9), ZOVKPOPUP_OK);
  ASSERT_EQ(note_.answers.size(), 1U);
  EXPECT_EQ(note_.answers[0].first, -1);
  EXPECT_EQ(note_.answers[0].second, "No valid Popup now");
  EXPECT_EQ(zovkpopup_show_policy(Note::complete, &note_, Note::destroy), ZOVKPOPUP_OK);
  ASSERT_EQ(note_.answers.size(), 2U);
  EXPECT_EQ(note_.answers[1].first, -1);
  EXPECT_EQ(note_.answers[1].second, "");
  EXPECT_EQ(note_.destroyed, 2);
}

TEST_F(CPopups, AGameNeedsNoCallback) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, nullptr, &note_, Note::destroy), ZOVKPOPUP_OK);
  EXPECT_EQ(zovkpopup_show_popup("nothing", 0, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(show("welcome", 0), ZOVKPOPUP_OK);
  awaitAnswers(1);
  EXPECT_GE(note_.destroyed, 1);
}

TEST_F(CPopups, ShuttingDownLetsTheUserDataOfWaitingRequestsGoUncalled) {
  addPage("welcome", 1, answeringPage("skip", "", false));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  EXPECT_EQ(show("welcome", 0), ZOVKPOPUP_OK);
  EXPECT_EQ(show("welcome", 0), ZOVKPOPUP_OK);
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  EXPECT_EQ(note_.destroyed, 0);
  EXPECT_EQ(zovkpopup_shut_down(), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.destroyed, 2);
  EXPECT_TRUE(note_.answers.empty());
}

TEST_F(CPopups, ShutDownMayBeCalledFromTheAnswer) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  const auto shutDown = [](std::int32_t, const char*, void* user) {
    static_cast<Note*>(user)->calls = 1 - zovkpopup_shut_down();
  };
  ASSERT_EQ(zovkpopup_show_popup("welcome", 0, shutDown, &note_, Note::destroy), ZOVKPOPUP_OK);
  while (note_.calls == 0 && zovkpopup_poll_descriptor() >= 0) {
    pollfd ready{zovkpopup_poll_descriptor(), POLLIN, 0};
    poll(&ready, 1, 1000);
    zovkpopup_pump(2000);
  }
  EXPECT_EQ(note_.calls, 1);
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_EQ(zovkpopup_poll_descriptor(), -1);
}

TEST_F(CPopups, WhatACallbackThrowsGoesNoFurther) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  const auto throwing = [](std::int32_t, const char*, void*) -> void {
    throw std::runtime_error("the game's own trouble");
  };
  EXPECT_EQ(zovkpopup_show_popup("nothing", 0, throwing, &note_, Note::destroy), ZOVKPOPUP_OK);
  EXPECT_EQ(countOf("[Error] A callback: the game's own trouble"), 1U) << allLines();
  EXPECT_EQ(note_.destroyed, 1);
  EXPECT_EQ(zovkpopup_show_popup("welcome", 0, throwing, nullptr, nullptr), ZOVKPOPUP_OK);
  EXPECT_EQ(show("welcome", 0), ZOVKPOPUP_OK);
  awaitAnswers(1);
  EXPECT_EQ(countOf("[Error] A callback: the game's own trouble"), 2U);
}

}  // namespace
}  // namespace zovk
