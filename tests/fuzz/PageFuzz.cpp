// What a hostile page can do to the popup that shows it, together with a player, a network and
// services of no better will. Each line of an input is an act: its first sign says which, the rest
// is what goes with it. Whatever happens, the game hears of each request once at the most, each
// navigation is decided, and nothing is left at the end.
#include <array>
#include <cstdint>
#include <map>

#include "fuzz/Engine.h"
#include "text/Md5.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

/// Popups of every kind; two scene types ask several of them at once.
PopupList popups() {
  PopupList list;
  for (std::uint64_t kind = 0; kind < 4; ++kind) {
    for (const std::uint64_t frequency : {1U, 2U, 3U}) {
      ZOVKPopupModel popup;
      popup.scene = "scene" + std::to_string(kind * 3 + frequency);
      popup.scene_type = kind % 2;
      popup.pop_type = kind;
      popup.pop_freq = frequency;
      popup.uri = "https://popups.example/" + popup.scene + "?a=1";
      popup.sig = md5Hex(popup.uri);
      popup.check_url = "https://check.example/" + popup.scene;
      if (kind != 1) popup.report_url = "https://report.example/" + popup.scene;
      popup.priority = static_cast<std::int32_t>(frequency);
      list.push_back(std::make_shared<const ZOVKPopupModel>(popup));
    }
  }
  ZOVKPopupModel policy = *list.back();
  policy.scene = "ZOVKPolicy";
  policy.scene_type = 0;
  policy.pop_freq = 2;
  policy.publish_time = 7;
  list.push_back(std::make_shared<const ZOVKPopupModel>(policy));
  return list;
}

class Game {
 public:
  explicit Game(std::string_view input) : input_(input) { engine_->setMergePopupArr(popups()); }

  void play() {
    for (const std::string& line : linesOf(input_)) {
      if (!line.empty()) act(line.front(), line.substr(1));
      settle();
      if (interface().liveWindows() > 1) fail("two popup windows", input_);
    }
    while (memory().urlSession.pendingCount() > 0) {
      for (std::size_t i = 0; i < memory().urlSession.requestCount(); ++i) {
        if (!memory().urlSession.request(i).answered) memory().urlSession.fail(i, "gone");
      }
      settle();
    }
    interface().failInterface("the end");
    settle();
    if (interface().liveWindows() > 0) fail("a window is left", input_);
  }

 private:
  MemoryPlatform& memory() { return engine_.memory(); }
  MemoryUserInterface& interface() { return memory().userInterface; }
  void settle() {
    memory().settle();
    for (const auto& [request, times] : heard_) {
      if (times > 1) fail("a request is answered twice", input_);
    }
    for (const MemoryDecision& decision : decisions_) {
      if (decision.undecided()) fail("a navigation is not decided", input_);
    }
    decisions_.clear();
  }
  ZOVKPopupComplete complete() {
    return [this, request = ++requests_](std::int32_t code, const std::string&) {
      if (code < -1 || code > 2) fail("an unknown code", input_);
      ++heard_[request];
    };
  }

  void act(char what, const std::string& text) {
    if (what == 'r') return ZOVKPopup::showPopup(text, text.size() % 2, complete());
    if (what == 'y') return ZOVKPopup::showPolicy(complete());
    if (what == 'h') return engine_->setHeldBack(text.empty());
    if (what == 'c') return answer("check.example", text);
    if (what == 'a') return answer("report.example", text);
    if (what == 'b') return press(text);
    if (const auto page = interface().frontWebView()) onPage(*page, what, text);
  }
  void onPage(MemoryWebView& page, char what, const std::string& text) {
    if (what == 'p') page.postMessage("ZOVKPopup", boost::json::value(text));
    if (what == 'o')
      page.postMessage("__qvOpenSdk", ZOVKPopupCommonTool::jsonStringToDictionary(text));
    if (what == 'q')
      page.postMessage("ZOVKPopup", ZOVKPopupCommonTool::jsonStringToDictionary(text));
    if (what == 'n') decisions_.push_back(page.navigate(text));
    if (what == 's') decisions_.push_back(page.navigate(text, TargetFrame::kSub));
    if (what == 'w') decisions_.push_back(page.navigate(text, TargetFrame::kNone));
    if (what == 'v') page.requestNewWindow(text);
    if (what == 'l') page.open(text);
    if (what == 'f') page.failProvisional(text);
    if (what == 'g') page.fail(text);
    if (what == 't') page.terminateProcess();
  }
  void answer(std::string_view service, const std::string& text) {
    for (const MemoryRequest& request : memory().urlSession.requestsTo(service)) {
      if (request.answered) continue;
      if (text.empty()) return memory().urlSession.fail(service, "no network");
      return memory().urlSession.answer(service, 200, text);
    }
  }
  void press(const std::string& text) {
    static constexpr std::array kButtons = {"rejectButtonDidClicked", "confirmButtonDidClicked",
                                            "returnButtonClicked", "crossButtonClicked",
                                            "refreshButtonClicked"};
    const auto layout = interface().frontLayout();
    if (layout != nullptr) layout->press(kButtons.at(text.size() % kButtons.size()));
  }

  const std::string_view input_;
  std::size_t requests_ = 0;
  std::map<std::size_t, int> heard_;
  std::vector<MemoryDecision> decisions_;
  Engine engine_;
};

}  // namespace

void fuzz(std::string_view input) {
  Game(input).play();
}

}  // namespace zovk
