#pragma once

#include <string>
#include <utility>

#include "capi/CGameFixture.h"

namespace zovk {

/// A game in C with a web window. `note_` records the window's events: each text is the name of the
/// event, followed by its text.
class CWindowFixture : public CGameFixture {
 protected:
  void TearDown() override {
    zovkpopup_web_window_free(std::exchange(window_, nullptr));
    CGameFixture::TearDown();
  }

  zovkpopup_web_window_settings pageSettings() {
    zovkpopup_web_window_settings page{};
    page.size = sizeof page;
    page.page_file = pageFile_.c_str();
    page.page_changed = [](void* user) { Note::text("changed", user); };
    page.failed = [](const char* why, void* user) { note("failed ", why, user); };
    page.load_started = [](void* user) { Note::text("started", user); };
    page.load_finished = [](void* user) { Note::text("finished", user); };
    page.load_failed = [](const char* why, void* user) { note("load failed ", why, user); };
    page.page_process_ended = [](void* user) { Note::text("ended", user); };
    page.new_window_asked = [](const char* url, void* user) { note("new window ", url, user); };
    page.user = &note_;
    page.destroy = Note::destroy;
    return page;
  }
  /// Writes a page whose script is run with the bridge as `bridge`.
  void writePage(const std::string& script) {
    std::ofstream(pageFile_) << R"(<!doctype html><meta charset="utf-8"><title>Page</title><body>
<script>
window.WVJBCallbacks = [bridge => {)"
                             << script << R"(}];
const asking = document.createElement('iframe');
asking.src = 'https://__bridge_loaded__';
document.documentElement.appendChild(asking);
</script>)";
  }
  /// Sets up and opens a window with such a page.
  void open(const std::string& script) {
    writePage(script);
    ASSERT_EQ(setUp(), ZOVKPOPUP_OK);
    const auto page = pageSettings();
    ASSERT_EQ(zovkpopup_web_window_open(&page, &window_), ZOVKPOPUP_OK) << allLines();
  }
  void awaitText(const std::string& text) {
    pumpUntil([&] { return has(text); }, text);
  }
  bool has(const std::string& text) const {
    for (const std::string& noted : note_.texts) {
      if (noted.starts_with(text)) return true;
    }
    return false;
  }
  /// Returns the result of a script as JSON, or its error.
  std::string evaluate(const std::string& script) {
    Note result;
    const auto done = [](const char* json, const char* error, void* user) {
      note(json == nullptr ? "error " : "", json == nullptr ? error : json, user);
    };
    EXPECT_EQ(zovkpopup_web_window_evaluate(window_, script.c_str(), done, &result, Note::destroy),
              ZOVKPOPUP_OK);
    pumpUntil([&] { return result.destroyed > 0; }, "the result of " + script);
    return result.texts.empty() ? "nothing" : result.texts.front();
  }

  static void note(const std::string& what, const char* text, void* user) {
    Note::text((what + (text == nullptr ? "nothing" : text)).c_str(), user);
  }

 private:
  ScratchDirectory pages_;

 public:  // for the game's functions, which are not members
  const std::string pageFile_ = (pages_.path() / "page.html").string();
  Note note_;
  zovkpopup_web_window* window_ = nullptr;
};

}  // namespace zovk
