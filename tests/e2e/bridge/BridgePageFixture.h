#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "e2e/navigation/PageServer.h"
#include "fixtures/ScreenFixture.h"
#include "zovkpopup/Bridge.h"
#include "zovkpopup/WebWindow.h"

namespace zovk {

/// A game with a web window that shows a real page. The game has the handlers "tell", which records
/// its text, and "double", which responds with the text twice.
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

  /// Returns a page that runs `script` at once. The script has `withBridge(use)`, which asks for
  /// the bridge once and calls `use(bridge)` as soon as it exists.
  static std::string page(const std::string& script);
  /// Returns such a page; all of `script` is run with the bridge as `bridge`.
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

  /// Returns the texts that the page has sent so far.
  const std::vector<std::string>& told() const { return told_; }
  void awaitTold(std::size_t count);
  /// Waits for the result of a script; an error is returned behind "ERROR ".
  boost::json::value evaluate(const std::string& script);
  /// Evaluates again and again, until the result is true.
  void awaitTrue(const std::string& condition);
  /// Returns how often a page has replaced another.
  int pagesSeen() const { return pagesSeen_; }
  void awaitPages(int count);
  /// Returns the bridge's own log lines so far.
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
