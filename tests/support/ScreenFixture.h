#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/helper/HelperInspector.h"
#include "support/HostFixture.h"
#include "support/VirtualScreen.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The real engine with the real helper, and a player with a pointer and a keyboard. Debug lines
/// are on. The display with its window manager is supplied from outside.
class ScreenFixture : public HostFixture {
 protected:
  /// Writes the bundle's document and sets the popups up.
  void start() {
    bundle().write();
    std::ofstream(std::filesystem::path(bundle().resourceDirectory()) / "Info.json")
        << R"({"ZOVK_DEBUG": true})";
    platform_ = makeDefaultPlatform(settings());
    ASSERT_TRUE(ZOVKPopupHost::setUp(platform_));
  }
  /// Shows a scene and waits until its page has loaded and has the keyboard.
  void show(const std::string& scene) {
    ZOVKPopup::showPopup(scene, 0, recordAnswer());
    awaitPage();
  }
  void awaitPage() {
    pumpUntil([this] { return countOf("Did finish navigation") > pages_; }, "the page");
    pages_ = countOf("Did finish navigation");
    sync();
  }
  void sync() {
    bool done = false;
    screen().sync([&](bool) { done = true; });
    pumpUntil([&] { return done; }, "the screen");
  }
  /// Clicks with the real pointer on the middle of a view, or beside it. Only views that the engine
  /// has named to the helper have a known place.
  void click(const std::string& outlet, double beside = 0) {
    sync();
    const auto place = screen().viewFrame(outlet);
    ASSERT_TRUE(place && place->visible) << outlet;
    const Rect& frame = place->frame;
    const auto middle = [](double start, double length) {
      return " " + std::to_string(static_cast<int>(start + length / 2));
    };
    run("mousemove" + middle(frame.x + beside, frame.width) + middle(frame.y, frame.height) +
        " click 1");
  }
  /// Returns the place of a view on the popup's screen, or nothing if the layout does not have it.
  std::optional<HelperInspector::ViewFrame> place(const std::string& outlet) {
    screen().viewFrame(outlet);
    sync();
    return screen().viewFrame(outlet);
  }
  /// Turns the screen and waits until the popup fills it in its new shape.
  void turn(VirtualScreen& display, int width, int height, double scale = 1) {
    display.resize(static_cast<int>(width * scale), static_cast<int>(height * scale));
    pumpUntil(
        [&] {
          const auto content = place("contentView");
          return content && content->frame == Rect{0, 0, double(width), double(height)};
        },
        "the popup to fill " + std::to_string(width) + "x" + std::to_string(height));
  }
  /// Presses real keys.
  static void press(const std::string& keys) { run("key " + keys); }
  bool isShown(const std::string& outlet) {
    sync();
    const auto place = screen().viewFrame(outlet);
    return place && place->visible;
  }
  HelperInspector& screen() {
    return dynamic_cast<HelperInspector&>(platform_->interfaces().userInterface);
  }
  /// Returns the log messages of the popup's screen, without their places in the source.
  std::vector<std::string> screenMessages() {
    std::vector<std::string> messages;
    for (const std::string& line : lines()) {
      if (!line.starts_with("[Debug]ZOVKPopupViewController ")) continue;
      std::size_t start = 0;
      for (int word = 0; word < 3; ++word) start = line.find(' ', start) + 1;
      messages.push_back(line.substr(start));
    }
    return messages;
  }

 private:
  static void run(const std::string& arguments) {
    ASSERT_EQ(std::system(("xdotool " + arguments).c_str()), 0) << arguments;
  }
  std::size_t countOf(const std::string& text) {
    std::size_t count = 0;
    for (const std::string& line : lines()) count += line.ends_with(text) ? 1 : 0;
    return count;
  }

  std::shared_ptr<HostedPlatform> platform_;
  std::size_t pages_ = 0;
};

}  // namespace zovk
