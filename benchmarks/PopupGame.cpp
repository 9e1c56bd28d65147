#include "PopupGame.h"

#include <filesystem>
#include <fstream>

#include "zovkpopup/Host.h"

namespace zovk {
namespace {

constexpr const char* kLoadedLine = "Did finish navigation";

}  // namespace

PopupGame::PopupGame(const std::string& page) {
  ZOVKPopupModel popup;
  popup.scene = "page";
  popup.pop_freq = 2;
  bundle_.addPage(popup, page);
  bundle_.write();
  pagePath = bundle_.pagePaths().front();
  // The log tells when the page has loaded.
  std::ofstream(std::filesystem::path(bundle_.resourceDirectory()) / "Info.json")
      << R"({"ZOVK_DEBUG": true})";
}

bool PopupGame::start() {
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-benchmark";
  settings.resourceDirectory = bundle_.resourceDirectory();
  settings.dataDirectory = home_.path().string();
  settings.nativeWindow = loop.nativeWindow();
  settings.logSink = [this](std::string_view line) {
    if (line.find(kLoadedLine) != std::string_view::npos) {
      loaded = std::chrono::steady_clock::now();
    }
  };
  if (!ZOVKPopupHost::setUp(settings)) return false;
  loop.runFrames(180);  // the helper gets warm while the game shows its own start
  return true;
}

}  // namespace zovk
