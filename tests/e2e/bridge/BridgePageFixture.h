#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "e2e/navigation/PageServer.h"
#include "support/ScreenFixture.h"
#include "zovkpopup/Bridge.h"
#include "zovkpopup/WebWindow.h"

namespace zovk {

/// A game with a web window of its own, whose page is a real one. The game has the handlers "tell",
/// which notes the text it is given, and "double", which responds with the text twice.
class BridgePageFixture : public ScreenFixture {
 protected:
  using Value = std::optional<boost::json::value>;
  using Respond = ZOVKPopupWKWebViewJavascriptBridge::ResponseCallback;

  BridgePageFixture() { start(); }
  // The game ends first: its open connections would hold the servers up.
  ~BridgePageFixture() override {
    window_.reset();
    ZOVKPopupHost::shutDown();
  }

  /// A page that runs `script` at once. The script has `withBridge(use)`, which asks for the bridge
  /// once and calls `use(bridge)` as soon as it is there.
  static std::string page(const std::string& script);
  /// The same, with all of `script` run with the bridge as `bridge`.
  static std::string bridgePage(const std::string& script);

  /// Opens the window with a page at "/page".
  void open(const std::string& html) { openAddress(site_.page("/page", html)); }
  void openAddress(const std::string& address);
  ZOVKPopupWebWindow& window() { return *window_; }
  ZOVKPopupWKWebViewJavascriptBridge& bridge() { return window_->bridge(); }
  bool windowIsThere() const { return window_ != nullptr; }
  void letWindowGo() { window_.reset(); }
  ZOVKPopupWebWindowSettings& windowSettings() { return windowSettings_; }
  PageServer& site() { return site_; }

  /// The texts that the page has told so far.
  const std::vector<std::string>& told() const { return told_; }
  void awaitTold(std::size_t count);
  /// The result of a script, once it is there; what went wrong behind "ERROR " otherwise.
  boost::json::value evaluate(const std::string& script);
  /// Evaluates again and again, until the result is true.
  void awaitTrue(const std::string& condition);
  /// How often pages have taken the place of others.
  int pagesSeen() const { return pagesSeen_; }
  void awaitPages(int count);
  /// The bridge's own lines so far.
  std::vector<std::string> bridgeLines();
  void awaitBridgeLines(std::size_t count);

 private:
  PageServer site_;
  ZOVKPopupWebWindowSettings windowSettings_;
  std::unique_ptr<ZOVKPopupWebWindow> window_;
  std::vector<std::string> told_;
  int pagesSeen_ = 0;
};

std::string textOf(const std::optional<boost::json::value>& value);

}  // namespace zovk
