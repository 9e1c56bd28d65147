#include <gmock/gmock.h>

#include "capi/CGameFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

/// What the game receives, in order.
class CHooks : public CGameFixture {
 protected:
  zovkpopup_status setHooks() {
    zovkpopup_hooks hooks{};
    hooks.size = sizeof hooks;
    hooks.popups_will_appear = [](void* user) { Note::text("appear", user); };
    hooks.popups_did_disappear = [](void* user) { Note::text("disappear", user); };
    hooks.user = &note_;
    hooks.destroy = Note::destroy;
    return zovkpopup_set_hooks(&hooks);
  }
  zovkpopup_status show() {
    const auto answered = [](std::int32_t, const char*, void* user) { Note::text("answer", user); };
    return zovkpopup_show_popup("welcome", 0, answered, &note_, nullptr);
  }
  void awaitTexts(std::size_t count) {
    pumpUntil([&] { return note_.texts.size() >= count; }, std::to_string(count) + " calls");
  }

  Note note_;
};

TEST_F(CHooks, AreCalledAroundAPopupUntilOthersTakeTheirPlace) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(setHooks(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  awaitTexts(3);
  EXPECT_EQ(note_.texts, (std::vector<std::string>{"appear", "answer", "disappear"}));
  zovkpopup_hooks none{};
  none.size = sizeof none;
  EXPECT_EQ(zovkpopup_set_hooks(&none), ZOVKPOPUP_OK);
  EXPECT_EQ(note_.destroyed, 1);
}

TEST_F(CHooks, ReceiveTheEventsOfEachPopup) {
  addPage("welcome", 1, answeringPage("commit", "", false));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_hooks hooks{};
  hooks.size = sizeof hooks;
  hooks.popup_event = [](const zovkpopup_popup_event* event, void* user) {
    EXPECT_EQ(event->size, sizeof *event);
    const std::string text = std::to_string(event->kind) + " " + event->scene + " " +
                             std::to_string(event->result) + " " + event->message + event->reason;
    Note::text(text.c_str(), user);
    EXPECT_EQ(std::string(event->sentence).empty(), std::string(event->reason).empty());
    if (event->kind != ZOVKPOPUP_EVENT_SHOWN) return;
    // The player closes the popup once it is there.
    zovkpopup_game_pad_did_press(ZOVKPOPUP_GAME_PAD_LEAVE, nullptr, nullptr);
  };
  hooks.user = &note_;
  ASSERT_EQ(zovkpopup_set_hooks(&hooks), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_show_popup("nowhere", 0, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  awaitTexts(4);
  EXPECT_THAT(note_.texts,
              ::testing::UnorderedElementsAre("2 nowhere -1 no_popup", "0 welcome -1 ", "answer",
                                              R"(1 welcome 0 {"action":"skip","msg":""})"));
}

TEST_F(CHooks, ReceiveTheEventOfAPopupThatTheRequestDidNotReach) {
  // The name decides which is first, as all else is the same.
  for (const char* scene : {"a", "b"}) {
    ZOVKPopupModel popup;
    popup.scene = scene;
    popup.scene_type = 1;
    popup.pop_freq = 2;
    popup.pop_id = *scene;
    bundle().addPage(popup, answeringPage("cancel", "", true));
  }
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_hooks hooks{};
  hooks.size = sizeof hooks;
  hooks.popup_event = [](const zovkpopup_popup_event* event, void* user) {
    if (event->kind == ZOVKPOPUP_EVENT_SHOWN) return;  // may come before the answer or not at all
    const std::string text = std::to_string(event->kind) + " " + event->scene + " " +
                             std::to_string(event->pop_id) + " " + std::to_string(event->result) +
                             " " + event->reason + ": " + event->sentence;
    Note::text(text.c_str(), user);
  };
  hooks.user = &note_;
  ASSERT_EQ(zovkpopup_set_hooks(&hooks), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_show_popup("", 1, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  awaitTexts(2);
  EXPECT_THAT(note_.texts,
              ElementsAre("1 b 98 2 : ",
                          "2 a 97 -1 request_ended: Its request ended with another popup "
                          "before its turn."));
}

TEST_F(CHooks, OfAnOlderGameReceiveNoEvents) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  zovkpopup_hooks hooks{};
  hooks.size = offsetof(zovkpopup_hooks, popup_event);
  // Beyond the size that the older game gives, so the library must not read it.
  hooks.popup_event = [](const zovkpopup_popup_event*, void*) { FAIL(); };
  ASSERT_EQ(zovkpopup_set_hooks(&hooks), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_show_popup("nowhere", 0, nullptr, nullptr, nullptr), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_pump(1'000'000), ZOVKPOPUP_OK);
}

TEST_F(CHooks, AreLetGoByTheShutDown) {
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(setHooks(), ZOVKPOPUP_OK);
  zovkpopup_shut_down();
  EXPECT_EQ(note_.destroyed, 1);
}

TEST_F(CHooks, APopupThatIsHeldBackComesWhenItIsReleased) {
  addPage("welcome", 1, answeringPage("skip", "", true));
  ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_hold_popups(), ZOVKPOPUP_OK);
  ASSERT_EQ(show(), ZOVKPOPUP_OK);
  ASSERT_EQ(zovkpopup_pump(1'000'000), ZOVKPOPUP_OK);
  EXPECT_TRUE(note_.texts.empty());
  EXPECT_FALSE(logged("Did start provisional navigation"));
  ASSERT_EQ(zovkpopup_release_popups(), ZOVKPOPUP_OK);
  awaitTexts(1);
  EXPECT_EQ(note_.texts, (std::vector<std::string>{"answer"}));
}

}  // namespace
}  // namespace zovk
