// Every kind of popup on every common screen, in every look: the places of the buttons are checked,
// and the pictures are left in the build folder for people to look at.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "fixtures/ScreenFixture.h"

namespace zovk {
namespace {

constexpr const char* kPage = R"(<!doctype html><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1"><title>Lantern night</title>
<style>
  :root { color-scheme: light dark; }
  body { margin: 0; padding: 72px 24px 24px; font: 17px/1.5 sans-serif; max-width: 34em;
         background: Canvas; color: CanvasText; box-sizing: border-box; min-height: 100vh;
         margin-inline: auto; }
  h1 { font-size: 26px; line-height: 1.25; margin: 0 0 12px; }
</style>
<h1>Tonight the river is lit</h1>
<p>For one evening every lantern that you set afloat counts twice. Find the old ferryman at the
northern pier; he knows where the current is kind.</p><p>The night ends at dawn, and whatever you
have gathered stays yours.</p>
<script>addEventListener('keydown', event => {
  if (event.key === 'n') location = 'nosuch:place';
  if (event.key === 'Enter') window.webkit.messageHandlers.ZOVKPopup.postMessage('{"action":"skip"}');
});</script>)";

struct Kind {
  const char* name;
  const char* scene;
  std::uint64_t popType;
  bool deadLink;
  std::vector<std::string> buttons;
};

const Kind kKinds[] = {{"ordinary", "lobby", 1, false, {"crossBtn"}},
                       {"game", "game", 2, false, {"returnBtn"}},
                       {"game-refresh", "game2", 2, true, {"returnBtn", "refreshBtn"}},
                       {"policy", "ZOVKPolicy", 1, false, {"rejectBtn", "confirmBtn"}},
                       {"permission", "ZOVKPolicy_Permission", 1, false, {"centerConfirmBtn"}}};

// The last one is a small window of a game: hardly wider than high.
constexpr Size kSizes[] = {{390, 844},  {844, 390},   {768, 1024},
                           {1280, 800}, {1920, 1080}, {400, 350}};

struct Look {
  const char* name;
  const char* setting;
  int scale;
  const char* language;
};

const Look kLooks[] = {
    {"light", "[org/gnome/desktop/interface]\ncolor-scheme='prefer-light'\n", 1, "C.UTF-8"},
    {"dark", "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n", 1, "C.UTF-8"},
    {"contrast", "[org/gnome/desktop/a11y/interface]\nhigh-contrast=true\n", 1, "C.UTF-8"},
    {"fine", "[org/gnome/desktop/interface]\ncolor-scheme='prefer-light'\n", 2, "C.UTF-8"},
    {"chinese", "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n", 1, "zh_CN.UTF-8"}};

void PrintTo(const Look& look, std::ostream* stream) {
  *stream << look.name;
}
void PrintTo(const Kind& kind, std::ostream* stream) {
  *stream << kind.name;
}

bool overlap(const Rect& a, const Rect& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

class Pictures : public ScreenFixture, public testing::WithParamInterface<std::tuple<Look, Kind>> {
 protected:
  static const Look& look() { return std::get<0>(GetParam()); }
  static const Kind& kind() { return std::get<1>(GetParam()); }
  void SetUp() override {
    if (!VirtualScreen::isThere()) GTEST_SKIP() << "turns no screen but scripts/with-display's";
    const std::filesystem::path settings = desktop_.path() / "glib-2.0/settings/keyfile";
    std::filesystem::create_directories(settings.parent_path());
    std::ofstream(settings) << look().setting;
    setenv("GSETTINGS_BACKEND", "keyfile", 1);
    setenv("XDG_CONFIG_HOME", desktop_.path().c_str(), 1);
    setenv("GDK_SCALE", std::to_string(look().scale).c_str(), 1);
    setenv("LC_ALL", look().language, 1);
    ZOVKPopupModel model = popup(kind().scene, 1);
    model.pop_type = kind().popType;
    bundle().addPage(model, kPage);
    display_.resize(static_cast<int>(kSizes[0].width) * look().scale,
                    static_cast<int>(kSizes[0].height) * look().scale);
    start();
    show(kind().scene);
    if (kind().deadLink) {
      press("n");
      pumpUntil([this] { return isShown("refreshBtn"); }, "the refresh button");
    }
  }
  void expectButtonsInReach(const Size& size) {
    std::vector<Rect> seen;
    for (const std::string& name : kind().buttons) {
      const auto button = place(name);
      ASSERT_TRUE(button && button->visible) << name;
      const Rect& frame = button->frame;
      EXPECT_GE(frame.width, 44) << name;
      EXPECT_GE(frame.height, 44) << name;
      EXPECT_GE(frame.x, 0) << name;
      EXPECT_GE(frame.y, 0) << name;
      EXPECT_LE(frame.x + frame.width, size.width) << name;
      EXPECT_LE(frame.y + frame.height, size.height) << name;
      for (const Rect& other : seen) EXPECT_FALSE(overlap(frame, other)) << name;
      seen.push_back(frame);
    }
    for (const char* name : {"crossBtn", "returnBtn", "refreshBtn", "rejectBtn", "confirmBtn"}) {
      if (std::ranges::find(kind().buttons, name) != kind().buttons.end()) continue;
      EXPECT_FALSE(place(name)->visible) << name;
    }
  }
  void takePicture(const Size& size) {
    const std::filesystem::path folder = std::filesystem::path(ZOVKPOPUP_PICTURES) / look().name;
    std::filesystem::create_directories(folder);
    const std::string file = std::string(kind().name) + "-" + std::to_string(int(size.width)) +
                             "x" + std::to_string(int(size.height)) + ".png";
    std::optional<bool> done;
    screen().snapshot(nullptr, folder / file, [&](bool written) { done = written; });
    pumpUntil([&] { return done.has_value(); }, "the picture");
    EXPECT_TRUE(done.value());
    EXPECT_EQ(std::system(("identify -format '%wx%h' '" + (folder / file).string() +
                           "' | grep -qx " + std::to_string(int(size.width) * look().scale) + "x" +
                           std::to_string(int(size.height) * look().scale))
                              .c_str()),
              0)
        << "every pixel of the screen";
  }

  ScratchDirectory desktop_;
  VirtualScreen display_;
};

TEST_P(Pictures, HaveEveryButtonInReachOnEveryScreen) {
  for (const Size& size : kSizes) {
    SCOPED_TRACE(testing::Message() << size.width << "x" << size.height);
    turn(display_, static_cast<int>(size.width), static_cast<int>(size.height), look().scale);
    expectButtonsInReach(size);
    takePicture(size);
  }
}

INSTANTIATE_TEST_SUITE_P(Popup, Pictures,
                         testing::Combine(testing::ValuesIn(kLooks), testing::ValuesIn(kKinds)),
                         [](const auto& parameter) {
                           std::string name = std::string(std::get<0>(parameter.param).name) + "_" +
                                              std::get<1>(parameter.param).name;
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace
}  // namespace zovk
