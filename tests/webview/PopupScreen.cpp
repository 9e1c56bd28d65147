#include "PopupScreen.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <boost/json/array.hpp>

namespace zovk {
namespace {

constexpr int kFirstOutlet = 10;
constexpr std::array<const char*, 10> kOutlets = {
    "contentView", "backgroundView",  "stackView", "aloneConfirmStackView",
    "rejectBtn",   "confirmBtn",      "returnBtn", "crossBtn",
    "refreshBtn",  "centerConfirmBtn"};

std::string middle(const boost::json::array& place, std::size_t axis, int origin) {
  const std::int64_t start = place.at(axis).to_number<std::int64_t>();
  const std::int64_t length = place.at(axis + 2).to_number<std::int64_t>();
  return std::to_string(origin + start + length / 2);
}

}  // namespace

void PopupScreen::createWindow() {
  helper_.send({{"type", "window.create"},
                {"window", kWindow},
                {"view", kRoot},
                {"frame", {kLeft, kTop, kWidth, kHeight}}});
}

void PopupScreen::loadLayout(const std::string& name, const std::string& bundle) {
  helper_.send({{"type", "layout.load"},
                {"layout", 1},
                {"view", kLayoutRoot},
                {"bundle", bundle},
                {"name", name}});
  for (const char* outlet : kOutlets) {
    helper_.send(
        {{"type", "layout.outlet"}, {"layout", 1}, {"view", view(outlet)}, {"name", outlet}});
  }
  hide("refreshBtn", false);  // the one that the layout files leave out of sight
  helper_.send({{"type", "view.add"}, {"view", kRoot}, {"child", kLayoutRoot}});
  helper_.send({{"type", "view.pinEdges"}, {"view", kLayoutRoot}, {"to", kRoot}});
}

void PopupScreen::createWebView(bool opaque) {
  makeWebView(view("contentView"), opaque);
}

void PopupScreen::fillWithWebView() {
  makeWebView(kRoot, false);
}

void PopupScreen::makeWebView(int content, bool opaque) {
  helper_.send({{"type", "web.create"},
                {"view", kWebView},
                {"handlers", {"ZOVKPopup", "__qvOpenSdk"}},
                {"inlineMedia", true},
                {"mobile", true},
                {"bounces", true},
                {"scrollIndicator", false},
                {"adjustInset", false},
                {"opaque", opaque}});
  helper_.send({{"type", "view.add"}, {"view", content}, {"child", kWebView}});
  helper_.send({{"type", "view.pinEdges"}, {"view", kWebView}, {"to", content}});
  helper_.send({{"type", "view.back"}, {"view", content}, {"child", kWebView}});
}

void PopupScreen::show() {
  helper_.send({{"type", "window.show"}, {"window", kWindow}});
  helper_.sync(kWindow);
}

void PopupScreen::open() {
  createWindow();
  loadLayout();
  createWebView();
  show();
}

void PopupScreen::loadPage(const std::string& name) {
  const std::string url = pageUrl(name);
  helper_.send({{"type", "web.loadFile"}, {"view", kWebView}, {"url", url}, {"readAccess", url}});
  decide(helper_.await("web.policy", {{"view", kWebView}}));
  helper_.await("web.finished", {{"view", kWebView}});
}

HelperMessage PopupScreen::ask(const std::string& url) {
  const char* command = url.starts_with("file:") ? "web.loadFile" : "web.load";
  helper_.send({{"type", command}, {"view", kWebView}, {"url", url}, {"readAccess", url}});
  return helper_.await("web.policy", {{"view", kWebView}});
}

void PopupScreen::decide(const HelperMessage& question, bool allow) {
  helper_.send({{"type", "web.decide"},
                {"view", kWebView},
                {"decision", question.at("decision")},
                {"allow", allow}});
}

void PopupScreen::load(const std::string& url) {
  decide(ask(url));
  helper_.await("web.finished", {{"view", kWebView}});
}

void PopupScreen::openPage(const std::string& name) {
  open();
  loadPage(name);
}

int PopupScreen::view(const std::string& outlet) {
  const auto found = std::find(kOutlets.begin(), kOutlets.end(), outlet);
  if (found == kOutlets.end()) throw std::invalid_argument(outlet);
  return kFirstOutlet + static_cast<int>(found - kOutlets.begin());
}

boost::json::value PopupScreen::evaluate(const std::string& script) {
  const int id = ++lastEvaluation_;
  helper_.send({{"type", "web.evaluate"}, {"view", kWebView}, {"id", id}, {"script", script}});
  const HelperMessage result = helper_.await("web.evaluated", {{"id", id}});
  return result.contains("value") ? result.at("value") : result.at("error");
}

boost::json::array PopupScreen::place(int view) {
  return helper_.await("view.frame", {{"view", view}, {"visible", true}}).at("frame").as_array();
}

void PopupScreen::hide(const std::string& outlet, bool hidden) {
  helper_.send({{"type", "view.hidden"}, {"view", view(outlet)}, {"hidden", hidden}});
}

void PopupScreen::click(const std::string& outlet) {
  const boost::json::array at = place(view(outlet));
  const int status =
      runProgram({"xdotool", "mousemove", middle(at, 0, kLeft), middle(at, 1, kTop), "click", "1"});
  if (status != 0) throw std::runtime_error("the pointer cannot be moved");
}

void PopupScreen::clickPage(int button) {
  if (page_.empty()) page_ = place(kWebView);
  const int status = runProgram({"xdotool", "mousemove", middle(page_, 0, kLeft),
                                 middle(page_, 1, kTop), "click", std::to_string(button)});
  if (status != 0) throw std::runtime_error("the pointer cannot be moved");
}

std::string PopupScreen::pageUrl(const std::string& name) {
  return std::string("file://") + HELPER_PAGES + "/" + name;
}

}  // namespace zovk
