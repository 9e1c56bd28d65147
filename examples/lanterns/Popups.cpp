#include "Popups.h"

#include <stdexcept>

#include <zovkpopup/Host.h>
#include <zovkpopup/ZOVKPopup.h>

namespace lanterns {
namespace {

// The scene types of this game; resources/popups.json uses the same numbers.
constexpr std::uint64_t kEvents = 20;
constexpr std::uint64_t kGreetings = 30;

zovk::ZOVKPopupHostSettings settingsOf(const Options& options, const std::string& gameWindow) {
  zovk::ZOVKPopupHostSettings settings;
  settings.applicationId = "com.example.lanterns";
  settings.resourceDirectory = options.resourceDirectory;
  settings.dataDirectory = options.dataDirectory;
  settings.gameWindow = gameWindow;
  return settings;
}

}  // namespace

Popups::Popups(const Options& options, const std::string& gameWindow,
               const std::function<zovk::ZOVKPopupPicture()>& lastFrame, Listener listener,
               std::function<void(bool)> covered)
    : listener_(std::move(listener)) {
  zovk::ZOVKPopupHostSettings settings = settingsOf(options, gameWindow);
  settings.backdrop = lastFrame;
  if (!zovk::ZOVKPopupHost::setUp(settings)) {
    throw std::runtime_error("the popups could not be set up");
  }
  zovk::ZOVKPopupHost::setHooks({.popupsWillAppear = [covered] { covered(true); },
                                 .popupsDidDisappear = [covered] { covered(false); }});
  zovk::ZOVKPopup::setChannelID(1, "guest", "", "");
  if (!options.service.empty()) {
    zovk::ZOVKPopup::startPopup(options.service, "lanterns", "lanterns-key");
  }
}

Popups::~Popups() {
  zovk::ZOVKPopupHost::shutDown();
}

void Popups::pump() {
  zovk::ZOVKPopupHost::pump();
}

void Popups::keyboardMoved(bool here) {
  if (here) {
    zovk::ZOVKPopupHost::gameWindowDidBecomeKey();
  } else {
    zovk::ZOVKPopupHost::gameWindowDidResignKey();
  }
}

void Popups::windowResized(int width, int height) {
  zovk::ZOVKPopupHost::gameWindowDidResize(width, height);
}

void Popups::greet() {
  showPolicy();
  show("welcome", 0);
}

void Popups::endNight() {
  show("gift", 0);
}

std::vector<MenuItem> Popups::menu() {
  return {
      {"Welcome", '1', [this] { show("welcome", 0); }},
      {"Events", '2', [this] { show("", kEvents); }},
      {"Policy page", '3', [this] { show("ZOVKPolicy", 0); }},
      {"New policy?", '4', [this] { showPolicy(); }},
      {"Twice", '5',
       [this] {
         show("welcome", 0);
         show("moon", 0);
       }},
      {"Once", '6', [this] { show("", kGreetings); }},
      {"Arcade", '7', [this] { show("arcade", 0); }},
      {"Gift", '8', [this] { show("gift", 0); }},
      {"Wish", '9', [this] { show("wish", 0); }},
      {"Invitation", '0', [this] { show("invitation", 0); }},
      {"Permission", 'p', [this] { show("ZOVKPolicy_Permission", 0); }},
  };
}

void Popups::show(const std::string& scene, std::uint64_t sceneType) {
  if (scene.empty()) {
    const bool have = zovk::ZOVKPopup::havePopup(sceneType);
    listener_("havePopup(" + std::to_string(sceneType) + ") is " + (have ? "true" : "false"));
  }
  const auto heard = announce("showPopup(\"" + scene + "\", " + std::to_string(sceneType) + ")");
  zovk::ZOVKPopup::showPopup(scene, sceneType, heard);
}

void Popups::showPolicy() {
  zovk::ZOVKPopup::showPolicy(announce("showPolicy()"));
}

zovk::ZOVKPopupComplete Popups::announce(const std::string& call) {
  const std::string number = "#" + std::to_string(++calls_) + " ";
  listener_(number + call);
  return [this, number](std::int32_t code, const std::string& message) {
    listener_(number + "answered " + std::to_string(code) + ", " +
              (message.empty() ? "no message" : message));
  };
}

}  // namespace lanterns
